// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The types and first values in the code made of TEMPLATE-TEST-MIB, which has
// one of each kind.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>

#include "everything.h"

namespace {

using namespace everything_mib;

template <typename Expected, typename T>
constexpr bool Is = std::is_same_v<Expected, T>;

TEST(GeneratedRow, BeginsWithWhatDefvalSays) {
  const TestMadeEntry row;
  EXPECT_EQ(row.testMadeNumber, -7);
  EXPECT_EQ(row.testMadeLarge, 4294967295U);
  EXPECT_EQ(row.testMadeState, TestState::TwoWords);
  EXPECT_TRUE(row.testMadeTruth);
  EXPECT_EQ(row.testMadeText, "a 'text'");
  EXPECT_EQ(row.testMadeOctets, "\xff\x01");
  EXPECT_EQ(row.testMadeMac, (std::array<std::uint8_t, 6>{10, 0, 0, 0, 0, 1}));
  EXPECT_EQ(row.testMadeBits.Octets(), "\xc0");
  EXPECT_EQ(row.testMadeNoBits.Octets(), "");
  EXPECT_EQ(row.testMadePointer, snmp::Oid("1.3.6.1.4.1.32473.98.1.1"));
  EXPECT_EQ(row.testMadeAddress, snmp::IpAddress(192, 0, 2, 1));
  EXPECT_EQ(row.testMadeWait.value, 300U);
  EXPECT_EQ(row.testMadeStorage, snmp::StorageType::Volatile);
}

TEST(GeneratedRow, BeginsWithAValueOfItsSyntaxWithoutDefval) {
  EXPECT_EQ(TestMadeEntry().testMadeRequired, 1);
  EXPECT_EQ(TestGapEntry().testMoreLost, 2);
  EXPECT_EQ(TestPortEntry().testPortState, TestState::Unknown);
}

TEST(GeneratedRow, HasTheColumnsThatAugmentItAndThoseThatAreOnlySent) {
  static_assert(Is<std::int32_t, decltype(TestGapEntry::testMoreFound)>);
  static_assert(Is<std::uint32_t, decltype(TestGapEntry::testGapSent)>);
  static_assert(Is<TestGapTable, TestMoreTable>);
}

TEST(GeneratedEnumeration, HasEachLabelOnce) {
  EXPECT_EQ(static_cast<int>(TestState::Broken), -1);
  EXPECT_EQ(static_cast<int>(TestState::True), 1);
  EXPECT_EQ(static_cast<int>(TestState::TwoWords), 3);
  EXPECT_EQ(static_cast<int>(TestState::TwoWords2), 4);
  EXPECT_EQ(static_cast<int>(TestState::Large), 2147483647);
}

TEST(GeneratedKey, IsWhatTheIndexSays) {
  static_assert(Is<std::tuple<std::int32_t, bool>, TestGapKey>);
  static_assert(Is<std::tuple<snmp::InetAddress, snmp::InetAddressType,
                              std::array<std::uint8_t, 4>>,
                   TestHostKey>);
  static_assert(
      Is<std::tuple<std::uint32_t, TestState, std::string,
                    std::array<std::uint8_t, 6>, snmp::IpAddress, snmp::Oid,
                    snmp::Bits<TestEveryBits>, snmp::TimeTicks, std::string,
                    snmp::Implied<std::string>>,
         TestEveryKey>);
  static_assert(Is<snmp::Table<std::int32_t, TestPortEntry>, TestPortTable>);
}

TEST(GeneratedNotification, TakesTheRowsAndValuesThatTheAgentDoesNotHave) {
  using O = Objects;
  static_assert(Is<void (O::*)(std::uint32_t, std::uint32_t),
                   decltype(&O::SendTestOfScalars)>);
  static_assert(Is<void (O::*)(const TestGapKey&, const TestGapEntry&),
                   decltype(&O::SendTestOfARow)>);
  static_assert(Is<void (O::*)(), decltype(&O::SendTestOfNothing)>);
  static_assert(Is<void (O::*)(const std::string&, const TestMadeEntry&,
                               const std::string&, const TestMadeEntry&),
                   decltype(&O::SendTestOfTwoRows)>);
  static_assert(
      Is<void (O::*)(std::int32_t, const std::string&, const TestPortEntry&),
         decltype(&O::SendTestOfAnotherModule)>);
}

TEST(GeneratedObjects, HaveNamesThatAreNoWordsOfCpp) {
  static_assert(Is<snmp::Scalar<std::int32_t>, decltype(Objects::default_)>);
  static_assert(Is<snmp::Scalar<std::int32_t>, decltype(Objects::errno_)>);
  static_assert(Is<snmp::Scalar<std::int32_t>, decltype(Objects::module_)>);
}

}  // namespace
