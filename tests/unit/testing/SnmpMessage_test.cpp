// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/SnmpMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

namespace snmp = snmpsubagent;
using snmp::testing::Value;
using snmp::testing::Varbind;
using snmp::testing::internal::DecodeSnmp;
using snmp::testing::internal::EncodeSnmp;
using snmp::testing::internal::PduTag;
using snmp::testing::internal::SnmpMessage;
using testing::ElementsAreArray;

SnmpMessage With(const std::vector<Varbind>& varbinds) {
  SnmpMessage message{PduTag::Set, -5};
  message.first = 1;
  message.second = 2;
  message.varbinds = varbinds;
  return message;
}

TEST(SnmpMessage, IsEncodedAsTheRfcHasIt) {
  SnmpMessage get{PduTag::Get, 1};
  get.varbinds = {{"1.3.6.1.2.1", {}}};
  const char expected[] =
      "\x30\x23\x02\x01\x01\x04\x06"
      "public"
      "\xa0\x16\x02\x01\x01\x02\x01\x00\x02\x01\x00"
      "\x30\x0b\x30\x09\x06\x05\x2b\x06\x01\x02\x01\x05\x00";
  EXPECT_EQ(EncodeSnmp(get), std::string(expected, sizeof expected - 1));
}

TEST(SnmpMessage, ReadsAsItWasWritten) {
  using Unsigned = std::numeric_limits<std::uint32_t>;
  const std::vector<Varbind> varbinds{
      {"1.3.6.1.4.1.32473.4294967295", std::numeric_limits<int>::min()},
      {"2.999.3", std::numeric_limits<int>::max()},
      {"1.3.1", -1},
      {"1.3.2", 128},
      {"1.3.3", Unsigned::max()},
      {"1.3.4", snmp::Counter64{std::numeric_limits<std::uint64_t>::max()}},
      {"1.3.5", snmp::TimeTicks(0)},
      {"1.3.6", std::string(70000, 'x')},
      {"1.3.7", snmp::Oid("0.0")},
      {"1.3.8", snmp::Oid("2.47.128.16384")},
      {"1.3.9", snmp::IpAddress(192, 0, 2, 1)},
      {"1.3.10", 21.5},
      {"1.3.11", snmp::ValueType::NoSuchInstance},
      {"1.3.12", {}}};
  const SnmpMessage read = DecodeSnmp(EncodeSnmp(With(varbinds)));
  EXPECT_EQ(read.tag, PduTag::Set);
  EXPECT_EQ(read.requestId, -5);
  EXPECT_EQ(read.first, 1);
  EXPECT_EQ(read.second, 2);
  EXPECT_THAT(read.varbinds, ElementsAreArray(varbinds));
}

TEST(SnmpMessage, IsRefusedWhereverItEnds) {
  const std::string whole = EncodeSnmp(With({{"1.3.6", "text"}}));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_THROW(DecodeSnmp(whole.substr(0, size)), std::runtime_error) << size;
  }
}

TEST(SnmpMessage, IsReadOrRefusedWithAnyOctetChanged) {
  const std::string whole = EncodeSnmp(
      With({{"1.3.6", "text"}, {"1.3.7", snmp::Oid("1.3")}, {"1.3.8", 7}}));
  std::size_t refused = 0;
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (int octet = 0; octet < 256; ++octet) {
      std::string changed = whole;
      changed[place] = static_cast<char>(octet);
      try {
        DecodeSnmp(changed);
      } catch (const std::exception&) {
        ++refused;
      }
    }
  }
  EXPECT_GT(refused, whole.size());
}

}  // namespace
