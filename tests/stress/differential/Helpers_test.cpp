// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Tables with keys of every kind, as objects and with the agent library's own
// helpers, each with a master agent of the test. Rows come and go, every
// request goes to both, and the responses must be equal, varbind by varbind.
//
// SNMPSUBAGENT_DIFFERENTIAL_SEED repeats a run.
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "HelperTable.h"
#include "ManagersView.h"
#include "NetSNMPAgentGuard.h"
#include "Seed.h"
#include "support/Random.h"
#include "support/TestSubAgent.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Text.h"

namespace agentx = testkit::agentx;
namespace snmp = snmpsubagent;

namespace {

constexpr std::chrono::seconds kTimeout{60};

using MakeHelperTable = decltype(&MakeContainerTable);
using Implied = snmp::Implied<std::string>;
using ImpliedOid = snmp::Implied<snmp::Oid>;

// ---- Keys, at random, and as the agent library has them.

template <typename Number>
std::string InMemory(Number number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}
std::string InMemory(const snmp::Oid& id) {
  std::string memory;
  for (const std::uint32_t part : id) memory += InMemory(oid{part});
  return memory;
}

void SomeKey(Random& random, int& key) {
  key = random.OneOf({0, 1, 2, 3, 200, 65536, 2147483647});
}
void SomeKey(Random& random, unsigned int& key) {
  key = random.OneOf({0U, 1U, 2U, 128U, 65536U, 2147483647U});
}
void SomeKey(Random& random, snmp::TimeTicks& key) {
  SomeKey(random, key.value);
}
void SomeKey(Random& random, std::string& key) {
  key.clear();
  for (std::uint32_t size = random.Below(4); size > 0; --size) {
    key.push_back(random.OneOf({'a', 'b', '\0', '\x7f', '\xff'}));
  }
}
void SomeKey(Random& random, Implied& key) {
  SomeKey(random, key.value);
  key.value.push_back('a');
}
void SomeKey(Random& random, snmp::Oid& key) {
  std::vector<std::uint32_t> ids{1, 3};
  for (std::uint32_t size = random.Below(4); size > 0; --size) {
    ids.push_back(random.OneOf({0U, 1U, 255U, 65536U, 2147483647U}));
  }
  key = snmp::Oid(snmp::OidView(ids.data(), ids.size()));
}
void SomeKey(Random& random, ImpliedOid& key) { SomeKey(random, key.value); }
void SomeKey(Random& random, snmp::IpAddress& key) {
  for (auto& octet : key.octets) octet = random.OneOf({0, 1, 127, 255});
}
template <typename... Parts>
void SomeKey(Random& random, std::tuple<Parts...>& key) {
  std::apply([&](Parts&... part) { (SomeKey(random, part), ...); }, key);
}

void Add(HelperIndexes& to, int key) {
  to.push_back({ASN_INTEGER, InMemory(long{key})});
}
void Add(HelperIndexes& to, unsigned int key) {
  to.push_back({ASN_UNSIGNED, InMemory(static_cast<u_long>(key))});
}
void Add(HelperIndexes& to, snmp::TimeTicks key) {
  to.push_back({ASN_TIMETICKS, InMemory(static_cast<u_long>(key.value))});
}
void Add(HelperIndexes& to, const std::string& key) {
  to.push_back({ASN_OCTET_STR, key});
}
void Add(HelperIndexes& to, const Implied& key) {
  to.push_back({ASN_PRIV_IMPLIED_OCTET_STR, key.value});
}
void Add(HelperIndexes& to, const snmp::Oid& key) {
  to.push_back({ASN_OBJECT_ID, InMemory(key)});
}
void Add(HelperIndexes& to, const ImpliedOid& key) {
  to.push_back({ASN_PRIV_IMPLIED_OBJECT_ID, InMemory(key.value)});
}
// In an index the agent library takes it for a number in the byte order of the
// machine.
void Add(HelperIndexes& to, const snmp::IpAddress& key) {
  std::uint32_t number = 0;
  for (const std::uint8_t octet : key.octets) number = number << 8 | octet;
  to.push_back({ASN_IPADDRESS, InMemory(number)});
}
template <typename... Parts>
void Add(HelperIndexes& to, const std::tuple<Parts...>& key) {
  std::apply([&](const Parts&... part) { (Add(to, part), ...); }, key);
}

// ---- One table in both ways.

using Name = agentx::Oid;

Name TableName(std::uint32_t number) {
  return {1, 3, 6, 1, 4, 1, 32473, 1, number};
}

class Pair {
 public:
  virtual ~Pair() = default;
  virtual void Change(Random& random) = 0;
  virtual HelperTable& Helper() = 0;
  // The index of a row, which may have gone.
  virtual Name SomeIndex(Random& random) const = 0;
};

template <typename Key>
class PairOf final : public Pair {
 public:
  PairOf(snmp::Module& module, std::uint32_t number, MakeHelperTable make)
      : table_(module, std::to_string(number)),
        helper_(make({1, 3, 6, 1, 4, 1, 32473, 1, number}, Types())) {
    table_.Column(2, &HelperCells::number)
        .Column(3, &HelperCells::count)
        .Column(4, &HelperCells::text);
  }

  void Change(Random& random) override {
    Key key;
    SomeKey(random, key);
    HelperIndexes indexes;
    Add(indexes, key);
    if (!known_.empty() && random.OneIn(3)) {
      std::tie(key, indexes) = random.Element(known_);
      table_.Erase(key);
      return helper_->Erase(indexes);
    }
    const HelperCells cells{random.Between(-9, 9), random.Below(9),
                            std::string(random.Below(20), 't')};
    known_.emplace_back(key, indexes);
    table_.Set(key, cells);
    helper_->Set(indexes, cells);
  }
  HelperTable& Helper() override { return *helper_; }
  Name SomeIndex(Random& random) const override {
    if (known_.empty()) return {};
    snmp::IndexWriter index;
    snmp::IndexSyntax<Key>::Write(index, random.Element(known_).first);
    return {index.View().begin(), index.View().end()};
  }

 private:
  static std::vector<unsigned char> Types() {
    HelperIndexes indexes;
    Add(indexes, Key());
    std::vector<unsigned char> types;
    for (const HelperIndex& index : indexes) types.push_back(index.type);
    return types;
  }

  snmp::Table<Key, HelperCells> table_;
  std::unique_ptr<HelperTable> helper_;
  std::vector<std::pair<Key, HelperIndexes>> known_;
};

using Pairs = std::vector<std::unique_ptr<Pair>>;

template <typename... Keys>
Pairs MakePairs(snmp::Module& module, MakeHelperTable make) {
  Pairs pairs;
  (pairs.push_back(std::make_unique<PairOf<Keys>>(
       module, static_cast<std::uint32_t>(pairs.size() + 1), make)),
   ...);
  return pairs;
}
Pairs EveryKind(snmp::Module& module, MakeHelperTable make) {
  return MakePairs<int, unsigned int, snmp::TimeTicks, std::string, Implied,
                   snmp::Oid, ImpliedOid, snmp::IpAddress,
                   std::tuple<int, std::string, unsigned int>,
                   std::tuple<snmp::IpAddress, Implied>,
                   std::tuple<std::string, snmp::Oid, ImpliedOid>>(module,
                                                                   make);
}

// ---- Requests.

// For cells, their neighbours, parts of their names, and names of none. Without
// sub-identifiers of 2^31 and above, which the agent library reads through an
// int. Behind one that is too high for an octet, or for the length of a string,
// its helpers begin again with the first row: none of the test's is.
class Requests {
 public:
  Requests(Random& random, const Pairs& pairs)
      : random_(random), pairs_(pairs) {}

  agentx::Body Next() {
    switch (random_.Below(4)) {
      case 0:
        return agentx::Get{Ranges()};
      case 1:
        // Of one varbind and without an end, see Objects_test.cpp.
        return agentx::GetBulk{static_cast<std::uint16_t>(random_.Below(2)),
                               static_cast<std::uint16_t>(random_.Below(12)),
                               {{SomeName(), false, {}}}};
      default:
        return agentx::GetNext{Ranges()};
    }
  }

 private:
  Name SomeName() {
    const std::uint32_t number = random_.Below(pairs_.size());
    Name name = TableName(number + 1);
    name.insert(name.end(), {1, 1 + random_.Below(5)});
    const Name index = pairs_[number]->SomeIndex(random_);
    name.insert(name.end(), index.begin(), index.end());
    const auto odd = random_.OneOf<std::uint32_t>({0, 1, 2, 100, 127});
    switch (random_.Below(8)) {
      case 0:
        name.resize(random_.Between(9, static_cast<int>(name.size())));
        break;
      case 1:
        name.push_back(odd);
        break;
      case 2:
        if (name.back() > 0) --name.back();
        break;
      case 3:
        name[static_cast<std::size_t>(
            random_.Between(9, static_cast<int>(name.size()) - 1))] = odd;
        break;
      default:
        break;
    }
    return name;
  }

  std::vector<agentx::SearchRange> Ranges() {
    std::vector<agentx::SearchRange> ranges;
    for (int i = random_.Between(1, 4); i > 0; --i) {
      agentx::SearchRange range{SomeName(), random_.OneIn(4), {}};
      const Name end = SomeName();
      if (random_.OneIn(2) && range.start < end) range.end = end;
      ranges.push_back(range);
    }
    return ranges;
  }

  Random& random_;
  const Pairs& pairs_;
};

class SubAgent : public support::TestSubAgent {
 public:
  SubAgent(int port, const Pairs& pairs) : TestSubAgent(port), pairs_(pairs) {}
  void OnSubAgentConnected() override {
    TestSubAgent::OnSubAgentConnected();
    for (const auto& pair : pairs_) pair->Helper().Register();
  }

 private:
  const Pairs& pairs_;
};

void ExpectAlike(MakeHelperTable make, int requests) {
  Random random(Seed());
  const agentx::Listener listener;
  snmp::Agent agent("objects", {listener.Address()});
  snmp::Module module(agent, "1.3.6.1.4.1.32473.1");
  Pairs pairs;
  {
    const NetSNMPAgentGuard guard;
    pairs = EveryKind(module, make);
  }
  SubAgent subAgent(listener.Port(), pairs);
  subAgent.Start();
  auto other = std::make_unique<agentx::MasterSession>(
      listener.Accept(testkit::Deadlines::Session()), kTimeout);
  other->ServeUntil([&] { return other->Registered().size() == pairs.size(); });
  agent.Start();
  agentx::MasterSession master(listener.Accept(testkit::Deadlines::Session()),
                               kTimeout);
  master.ServeUntil([&] { return master.Registered().size() == 1; });

  Requests next(random, pairs);
  for (int i = 0; i < requests; ++i) {
    if (i < 100 || random.OneIn(4)) {
      const NetSNMPAgentGuard guard;
      random.Element(pairs)->Change(random);
    }
    const agentx::Body request = next.Next();
    ASSERT_EQ(ManagersView(master.Ask(request)),
              ManagersView(other->Ask(request)))
        << "request " << i << ", seed " << Seed() << ": "
        << agentx::Text(request);
  }
  other.reset();
  testkit::WaitFor([&] { return !subAgent.Connected(); },
                   testkit::Deadlines::Session());
}

TEST(ATable, AnswersLikeOneOfTableContainer) {
  ExpectAlike(MakeContainerTable, 3000);
}
TEST(ATable, AnswersLikeOneOfTdata) { ExpectAlike(MakeTdataTable, 3000); }

}  // namespace
