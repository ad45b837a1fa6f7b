// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The same scalars and table twice: as objects, and as node classes or with the
// agent library's own handlers, each with a master agent of the test. Every
// request goes to both, and the responses must be equal, varbind by varbind.
//
// SNMPSUBAGENT_DIFFERENTIAL_SEED repeats a run.
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "ManagersView.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPSmiNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "PlainTable.h"
#include "Seed.h"
#include "support/NodeRegistry.h"
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
constexpr unsigned int kColumns = 6;  // the first two are not accessible

struct Row {
  int number;
  unsigned int count;
  std::string text;
  bool enabled;
};
using Key = std::tuple<int, unsigned int>;

// Values of the scalars, which never change.
int number = -5;
unsigned int gauge = 4000000000;
unsigned int counter = 7;
unsigned long longGauge = gauge;
unsigned long longCounter = counter;

std::vector<unsigned long> Below(std::initializer_list<unsigned long> ids) {
  std::vector<unsigned long> oid{1, 3, 6, 1, 4, 1, 32473, 1};
  oid.insert(oid.end(), ids);
  return oid;
}

// One way of serving it beside the objects.
class Other {
 public:
  virtual ~Other() = default;
  virtual void Register() {}
  void AddRow(const Key& key, const Row& row) {
    int first = std::get<0>(key);
    unsigned int second = std::get<1>(key);
    Row copy = row;
    NetSNMPIntNodeData firstIndex(&first, eNodeAccessReadOnly, true);
    NetSNMPUnsignedIntNodeData secondIndex(&second, eNodeAccessReadOnly, true);
    firstIndex.isIndex_ = secondIndex.isIndex_ = true;
    NetSNMPIntNodeData number(&copy.number, eNodeAccessReadOnly, true);
    NetSNMPUnsignedIntNodeData count(&copy.count, eNodeAccessReadOnly, true);
    NetSNMPStringNodeData text(&copy.text, eNodeAccessReadOnly, true);
    NetSNMPBoolNodeData enabled(&copy.enabled, eNodeAccessReadOnly, true);
    const NetSNMPAgentGuard guard;
    store_->AddRow(
        {&firstIndex, &secondIndex, &number, &count, &text, &enabled});
  }

 protected:
  void BuildStore(NetSNMPTableNode* table) {
    std::vector<unsigned long> oid = Below({7, 1});
    NetSNMPIntNodeData first(&number, eNodeAccessReadOnly);
    NetSNMPUnsignedIntNodeData second(&gauge, eNodeAccessReadOnly);
    store_ = new NetSNMPTableEntryNode(
        oid.data(), static_cast<unsigned int>(oid.size()), "rows", "row",
        {&first, &second}, kColumns, table);
  }
  NetSNMPTableEntryNode* store_;  // the registry's
};

class NodeClasses : public Other {
 public:
  NodeClasses() {
    std::vector<unsigned long> oid = Below({7});
    BuildStore(new NetSNMPTableNode(
        oid.data(), static_cast<unsigned int>(oid.size()), "table",
        NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
        nullptr, ""));
    AddScalar(1, NetSNMPIntNodeData(&number, eNodeAccessReadOnly));
    AddScalar(2, NetSNMPUnsignedIntNodeData(&gauge, eNodeAccessReadOnly));
    AddScalar(9, NetSNMPCounter32NodeData(&counter, eNodeAccessReadOnly));
  }

 private:
  static void AddScalar(unsigned long id, const NetSNMPNodeData& value) {
    std::vector<unsigned long> oid = Below({id, 0});
    new NetSNMPDataNode(oid.data(), static_cast<unsigned int>(oid.size()),
                        "scalar" + std::to_string(id), value, nullptr, "");
  }
};

class Handlers : public Other {
 public:
  Handlers() {
    BuildStore(nullptr);
    table_ = std::make_unique<PlainTable>(Below({7}), "plain", *store_, "");
  }
  void Register() override {
    table_->Register();
    netsnmp_register_read_only_int_instance(
        "number", Below({1, 0}).data(), Below({1, 0}).size(), &number, nullptr);
    netsnmp_register_read_only_ulong_instance("gauge", Below({2, 0}).data(),
                                              Below({2, 0}).size(), &longGauge,
                                              nullptr);
    netsnmp_register_read_only_counter32_instance(
        "counter", Below({9, 0}).data(), Below({9, 0}).size(), &longCounter,
        nullptr);
  }

 private:
  std::unique_ptr<PlainTable> table_;
};

class SubAgent : public support::TestSubAgent {
 public:
  SubAgent(int port, Other& other) : TestSubAgent(port), other_(other) {}
  void OnSubAgentConnected() override {
    TestSubAgent::OnSubAgentConnected();
    other_.Register();
  }

 private:
  Other& other_;
};

class Objects {
 public:
  explicit Objects(int port)
      : agent_("objects", {"tcp:127.0.0.1:" + std::to_string(port)}),
        module_(agent_, "1.3.6.1.4.1.32473.1"),
        number_(module_, "1", number),
        gauge_(module_, "2", gauge),
        counter_(module_, "9", snmp::Counter32{counter}),
        table_(module_, "7") {
    table_.Column(3, &Row::number)
        .Column(4, &Row::count)
        .Column(5, &Row::text)
        .Column(6, &Row::enabled);
    agent_.Start();
  }
  void AddRow(const Key& key, const Row& row) { table_.Set(key, row); }

 private:
  snmp::Agent agent_;
  snmp::Module module_;
  snmp::Scalar<int> number_;
  snmp::Scalar<unsigned int> gauge_;
  snmp::Scalar<snmp::Counter32> counter_;
  snmp::Table<Key, Row> table_;
};

// Requests for instances that exist, their neighbours, parts of their names,
// and names of no object.
class Requests {
 public:
  explicit Requests(Random& random) : random_(random) {}
  void Know(const Key& key) { keys_.push_back(key); }

  agentx::Body Next() {
    switch (random_.Below(4)) {
      case 0:
        return agentx::Get{Ranges()};
      case 1:
        return Bulk();
      default:
        return agentx::GetNext{Ranges()};
    }
  }

 private:
  agentx::Oid Instance() {
    const std::vector<unsigned long> root = Below({});
    agentx::Oid name(root.begin(), root.end());
    if (random_.OneIn(4)) {
      name.insert(name.end(),
                  {random_.OneOf<std::uint32_t>({1, 2, 3, 8, 9, 10}), 0});
      return name;
    }
    const Key& key = random_.Element(keys_);
    name.insert(name.end(), {7, 1, random_.Below(kColumns + 2),
                             static_cast<std::uint32_t>(std::get<0>(key)),
                             std::get<1>(key)});
    return name;
  }

  agentx::Oid Name() {
    agentx::Oid name = Instance();
    const std::uint32_t odd = random_.OneOf<std::uint32_t>(
        {0, 1, 127, 128, 2147483647, 2147483648, 4294967295});
    switch (random_.Below(10)) {
      case 0:
        name.resize(random_.Between(1, static_cast<int>(name.size())));
        break;
      case 1:
        name.push_back(odd);
        break;
      case 2:
        name.back() += random_.OneOf<std::uint32_t>({1, 4294967295});
        break;
      case 3:
        name[static_cast<std::size_t>(
            random_.Between(6, static_cast<int>(name.size()) - 1))] = odd;
        break;
      case 4:
        return {1, 3, 6, 1, random_.Below(6), 1, odd};
      default:
        break;
    }
    return name;
  }

  // An end comes after the start, as RFC 2741, 5.2, has it: the agent library
  // does not look at others. It takes the end itself for part of the range if
  // that is a scalar's instance.
  agentx::SearchRange Range() {
    agentx::SearchRange range{Name(), random_.OneIn(4), {}};
    agentx::Oid end = Name();
    if (end.size() == Below({1, 0}).size()) end.pop_back();
    if (random_.OneIn(2) && range.start < end) range.end = end;
    return range;
  }

  std::vector<agentx::SearchRange> Ranges() {
    std::vector<agentx::SearchRange> ranges;
    for (int i = random_.Between(1, 5); i > 0; --i) ranges.push_back(Range());
    return ranges;
  }

  // Of one varbind and without an end, since the agent library mixes up several
  // when one has no successor, and includes the start in each repetition and
  // what is behind the end.
  agentx::GetBulk Bulk() {
    const agentx::SearchRange range{Name(), false, {}};
    return {static_cast<std::uint16_t>(random_.Below(2)),
            static_cast<std::uint16_t>(random_.Below(12)),
            {range}};
  }

  Random& random_;
  std::vector<Key> keys_;
};

template <typename OtherWay>
void ExpectAlike(int rows, int requests, std::size_t registrations) {
  const support::NodeRegistry registry;
  Random random(Seed());
  Requests next(random);
  OtherWay other;
  const agentx::Listener listener;
  SubAgent subAgent(listener.Port(), other);
  subAgent.Start();
  auto otherMaster = std::make_unique<agentx::MasterSession>(
      listener.Accept(testkit::Deadlines::Session()), kTimeout);
  otherMaster->ServeUntil(
      [&] { return otherMaster->Registered().size() == registrations; });
  Objects objects(listener.Port());
  agentx::MasterSession master(listener.Accept(testkit::Deadlines::Session()),
                               kTimeout);
  master.ServeUntil([&] { return master.Registered().size() == 1; });
  const auto addRow = [&] {
    const Key key(random.OneOf({0, 1, 2, 200, 2147483647}),
                  random.Below(static_cast<std::size_t>(rows)));
    const Row row{random.Between(-9, 9), random.Below(9),
                  std::string(random.Below(40), 't'), random.OneIn(2)};
    other.AddRow(key, row);
    objects.AddRow(key, row);
    next.Know(key);
  };
  for (int i = 0; i < rows; ++i) addRow();

  for (int i = 0; i < requests; ++i) {
    if (random.OneIn(20)) addRow();
    const agentx::Body request = next.Next();
    ASSERT_EQ(ManagersView(master.Ask(request)),
              ManagersView(otherMaster->Ask(request)))
        << "request " << i << ", seed " << Seed() << ": "
        << agentx::Text(request);
  }
  otherMaster.reset();
  testkit::WaitFor([&] { return !subAgent.Connected(); },
                   testkit::Deadlines::Session());
}

TEST(Objects, AnswerLikeTheNodeClasses) {
  ExpectAlike<NodeClasses>(8, 3000, 4);
}
TEST(Objects, AnswerLikeTheNodeClassesWithManyRows) {
  ExpectAlike<NodeClasses>(120, 1500, 4);
}
TEST(Objects, AnswerLikeTheAgentLibrarysHandlers) {
  ExpectAlike<Handlers>(8, 3000, 4);
}
TEST(Objects, AnswerLikeTheAgentLibrarysHandlersWithManyRows) {
  ExpectAlike<Handlers>(120, 800, 4);
}

}  // namespace
