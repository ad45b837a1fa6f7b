// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Byte strings of every length and content: with the tools as far as a UDP
// datagram carries them, with a master agent of the tests up to 65,535 octets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "Served.h"
#include "testkit/agentx/Master.h"

using testing::SizeIs;

namespace {

// Octets of any value. The first is one that no tool takes for text.
std::string RandomOctets(std::size_t size) {
  std::minstd_rand random(static_cast<unsigned>(size) + 1);
  std::string octets(size, '\0');
  for (char& octet : octets) octet = static_cast<char>(random());
  if (size > 0) octets[0] = '\xff';
  return octets;
}

std::string InHex(const std::string& octets) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string hex;
  for (const unsigned char octet : octets) {
    hex += {kDigits[octet / 16], kDigits[octet % 16]};
  }
  return hex;
}

// What snmpbulkwalk shows, in hex without spaces, by the whole name.
std::map<std::string, std::string> Shown(const std::string& out) {
  std::map<std::string, std::string> values;
  std::istringstream text(out);
  std::string name;
  for (std::string line; std::getline(text, line);) {
    const std::size_t separator = line.find(" = ");
    if (line.find(" = No more variables") != std::string::npos) continue;
    if (separator != std::string::npos) {
      name = line.substr(0, separator);
      line.erase(0, separator + 3);
      if (line.rfind("Hex-STRING: ", 0) == 0) line.erase(0, 12);
      if (line == "\"\"") line.clear();
    }
    for (const char c : line) {
      if (!std::isspace(static_cast<unsigned char>(c))) values[name] += c;
    }
    values[name];
  }
  return values;
}

TEST(AByteString, OfEachLengthUpTo1300OctetsIsServed) {
  Served served;
  std::vector<snmp::Scalar<std::string>> scalars;
  for (std::size_t size = 0; size <= 1300; ++size) {
    scalars.emplace_back(served.module, std::to_string(size + 1),
                         RandomOctets(size));
  }
  served.Start();
  const auto shown = Shown(
      served.master.Manager().BulkWalk("." + std::string(served.kSubtree)).out);
  ASSERT_THAT(shown, SizeIs(scalars.size()));
  for (std::size_t size = 0; size <= 1300; ++size) {
    ASSERT_EQ(shown.at(Served::Name(std::to_string(size + 1))),
              InHex(RandomOctets(size)));
  }
}

// Sets scalars to strings of these sizes in one request.
std::string SetAll(const Served& served,
                   const std::vector<std::size_t>& sizes) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const bool empty = sizes[i] == 0;  // snmpset knows no empty hex string
    words.insert(words.end(),
                 {Served::Name(std::to_string(i + 1)), empty ? "s" : "x",
                  InHex(RandomOctets(sizes[i]))});
  }
  return served.Set(words);
}

TEST(AByteString, OfEachLengthUpTo1300OctetsIsSet) {
  constexpr std::size_t kAtOnce = 40;
  Served served;
  std::vector<snmp::Scalar<std::string>> scalars;
  for (std::size_t i = 1; i <= kAtOnce; ++i) {
    scalars.emplace_back(served.module, std::to_string(i), "not set",
                         snmp::ReadWrite());
  }
  served.Start();
  for (std::size_t first = 0; first <= 1300; first += kAtOnce) {
    std::vector<std::size_t> sizes(kAtOnce);
    for (std::size_t i = 0; i < kAtOnce; ++i) sizes[i] = first + i;
    ASSERT_EQ(SetAll(served, sizes), "None") << "from " << first;
    for (std::size_t i = 0; i < kAtOnce; ++i) {
      ASSERT_EQ(scalars[i].Get(), RandomOctets(sizes[i]));
    }
  }
}

// The longest for which request and response fit a datagram.
TEST(AByteString, OfMoreThan64000OctetsIsSetAndServedOverUdp) {
  Served served;
  snmp::Scalar scalar(served.module, "1", std::string(), snmp::ReadWrite());
  served.Start();
  for (const std::size_t size :
       {1472, 1500, 4095, 4096, 16383, 16384, 32767, 32768, 64500}) {
    ASSERT_EQ(SetAll(served, {size}), "None") << size;
    ASSERT_EQ(scalar.Get(), RandomOctets(size));
    const auto shown =
        Shown(served.master.Manager().Get(Served::Name("1")).out);
    ASSERT_EQ(shown.at(Served::Name("1")), InHex(RandomOctets(size))) << size;
  }
}

// A scalar and a master agent of the tests.
class AtTestMaster {
 public:
  AtTestMaster()
      : agent_("the tests", OptionsFor(AddressOf(master_.Port()))),
        module_(agent_, Served::kSubtree),
        scalar_(module_, "1", std::string(), snmp::ReadWrite()) {
    agent_.Start();
    session_ = master_.AcceptServing(1);
  }

  // Whether these octets are taken, kept and served as they are.
  bool ComesBack(const std::string& octets) {
    using namespace testkit::agentx;
    const std::vector<Varbind> set{{name_, {Type::kOctetString, octets}}};
    const std::uint32_t transaction = session_->NewTransaction();
    if (session_->Ask(TestSet{set}, transaction).error != 0) return false;
    if (session_->Ask(CommitSet{}, transaction).error != 0) return false;
    session_->Send(CleanupSet{}, transaction);
    const Get get{{{name_, false, {}}}};
    return scalar_.Get() == octets && session_->Ask(get).varbinds == set;
  }

 private:
  const testkit::agentx::Oid name_{1, 3, 6, 1, 4, 1, 32473, 9, 1, 0};
  testkit::agentx::Master master_;
  snmp::Agent agent_;
  snmp::Module module_;
  snmp::Scalar<std::string> scalar_;
  testkit::agentx::Master::Session session_;
};

TEST(AByteString, OfEachLengthUpTo2100OctetsComesBackAsItWasSet) {
  AtTestMaster tested;
  for (std::size_t size = 0; size <= 2100; ++size) {
    ASSERT_TRUE(tested.ComesBack(RandomOctets(size))) << size;
  }
}

TEST(AByteString, OfUpTo65535OctetsComesBackAsItWasSet) {
  AtTestMaster tested;
  for (std::size_t size = 2101; size < 65535; size += 61) {
    ASSERT_TRUE(tested.ComesBack(RandomOctets(size))) << size;
  }
  for (const std::size_t size : {32767, 32768, 65532, 65533, 65534, 65535}) {
    ASSERT_TRUE(tested.ComesBack(RandomOctets(size))) << size;
  }
}

TEST(AByteString, OfTheSameOctetThroughoutComesBackAsItWasSet) {
  AtTestMaster tested;
  for (int octet = 0; octet < 256; ++octet) {
    for (const std::size_t size : {1, 2, 3, 4, 5, 300}) {
      ASSERT_TRUE(tested.ComesBack(std::string(size, static_cast<char>(octet))))
          << size << " times " << octet;
    }
  }
}

}  // namespace
