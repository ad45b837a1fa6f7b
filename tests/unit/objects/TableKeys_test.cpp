// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the indexes of the rows are that managers make.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <tuple>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

struct Line {
  int speed = 10;
};

// A table whose status is column 2, and whether a manager may make a row in it.
template <typename Key>
struct Keyed : Device {
  Keyed() {
    lines.Column(1, &Line::speed, snmp::ReadCreate()).RowStatus(2);
    Connect();
  }
  std::string Make(const std::string& index) {
    return Set({{"5.1.2." + index, Int(4)}});
  }

  snmp::Module module{agent, kBase};
  snmp::Table<Key, Line> lines{module, "5"};
};

constexpr char kNoCreation[] = "noCreation 1";

TEST(ARestrictedIndex, IsANumberInItsRanges) {
  Keyed<int> device;
  device.lines.Index(snmp::NotAccessible().Range(1, 10).Range(20, 20));
  EXPECT_EQ(device.Make("0"), kNoCreation);
  EXPECT_EQ(device.Make("1"), "noError");
  EXPECT_EQ(device.Make("10"), "noError");
  EXPECT_EQ(device.Make("11"), kNoCreation);
  EXPECT_EQ(device.Make("20"), "noError");
  EXPECT_EQ(device.lines.Size(), 3U);
}

TEST(ARestrictedIndex, IsOneOfTheValuesOfAnEnumeration) {
  enum class Side { Left = 1, Right = 2 };
  Keyed<Side> device;
  device.lines.Index(snmp::NotAccessible().Values(Side::Left, Side::Right));
  EXPECT_EQ(device.Make("2"), "noError");
  EXPECT_EQ(device.Make("3"), kNoCreation);
}

TEST(ARestrictedIndex, IsATimeInItsRange) {
  Keyed<snmp::TimeTicks> device;
  device.lines.Index(snmp::NotAccessible().Range(0, 100));
  EXPECT_EQ(device.Make("100"), "noError");
  EXPECT_EQ(device.Make("101"), kNoCreation);
}

TEST(ARestrictedIndex, IsATextOfItsSize) {
  Keyed<std::string> device;
  device.lines.Index(snmp::NotAccessible().Size(1, 2));
  EXPECT_EQ(device.Make("0"), kNoCreation);
  EXPECT_EQ(device.Make("2.65.66"), "noError");
  EXPECT_EQ(device.Make("3.65.66.67"), kNoCreation);
}

TEST(ARestrictedIndex, MayBeImplied) {
  Keyed<snmp::Implied<std::string>> device;
  device.lines.Index(snmp::NotAccessible().Size(2));
  EXPECT_EQ(device.Make("65"), kNoCreation);
  EXPECT_EQ(device.Make("65.66"), "noError");
}

TEST(ARestrictedIndex, HasTheBitsThatHaveNames) {
  enum class Day { Monday, Tuesday };
  Keyed<snmp::Bits<Day>> device;
  device.lines.Index(snmp::NotAccessible().NamedBits(Day::Monday));
  EXPECT_EQ(device.Make("1.128"), "noError");
  EXPECT_EQ(device.Make("1.64"), kNoCreation);
}

TEST(ARestrictedIndex, IsOnePartOfSeveral) {
  Keyed<std::tuple<int, std::string, snmp::InetAddress>> device;
  device.lines.template Index<0>(snmp::NotAccessible().Range(1, 4094))
      .template Index<1>(7, snmp::ReadOnly().Size(1))
      .template Index<2>(8, 9, snmp::ReadOnly().Size(4));
  EXPECT_EQ(device.Make("4095.1.65.1.4.192.0.2.1"), kNoCreation);
  EXPECT_EQ(device.Make("1.2.65.66.1.4.192.0.2.1"), kNoCreation);
  EXPECT_EQ(device.Make("1.1.65.16.1.97"), kNoCreation);
  EXPECT_EQ(device.Make("1.1.65.1.4.192.0.2.1"), "noError");
  EXPECT_EQ(device.Get("5.1.8.1.1.65.1.4.192.0.2.1"), "INTEGER 1");
}

TEST(ARestrictedIndex, IsNotThatOfTheApplicationsRows) {
  Keyed<int> device;
  device.lines.Index(snmp::NotAccessible().Range(1, 10));
  device.lines.Insert(11, {});
  EXPECT_EQ(device.Set({{"5.1.1.11", Int(7)}}), "noError");
  EXPECT_EQ(device.Get("5.1.1.11"), "INTEGER 7");
}

TEST(ARestrictedIndex, HasRestrictionsThatFitItsType) {
  Keyed<std::array<std::uint8_t, 6>> device;
  EXPECT_THROW(device.lines.Index(snmp::NotAccessible().Range(1, 10)),
               std::invalid_argument);
}

TEST(ARestrictedIndex, IsATruthValue) {
  Keyed<bool> device;
  device.lines.Index(snmp::NotAccessible().Range(1, 2));
  EXPECT_EQ(device.Make("1"), "noError");
  EXPECT_EQ(device.Make("2"), "noError");
  EXPECT_EQ(device.Make("3"), kNoCreation);
  Keyed<bool> restricted;
  restricted.lines.Index(snmp::NotAccessible().Range(1, 1));
  EXPECT_EQ(restricted.Make("1"), "noError");
  EXPECT_EQ(restricted.Make("2"), kNoCreation);
}

}  // namespace
