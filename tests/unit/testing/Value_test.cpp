// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "snmpsubagent/testing/Matchers.h"
#include "snmpsubagent/testing/Response.h"

namespace {

namespace snmp = snmpsubagent;
using snmp::ValueType;
using snmp::testing::Value;

enum class Alarm { Hot, Cold, Open };

TEST(Value, HasTheTypeOfItsCxxType) {
  EXPECT_EQ(Value(-1).Type(), ValueType::Integer);
  EXPECT_EQ(Value(1U).Type(), ValueType::Gauge32);
  EXPECT_EQ(Value(true).Type(), ValueType::Integer);
  EXPECT_EQ(Value(Alarm::Cold).Type(), ValueType::Integer);
  EXPECT_EQ(Value("text").Type(), ValueType::OctetString);
  EXPECT_EQ(Value(snmp::Bits<Alarm>{Alarm::Open}).Type(),
            ValueType::OctetString);
  EXPECT_EQ(Value(snmp::Oid("1.3")).Type(), ValueType::ObjectIdentifier);
  EXPECT_EQ(Value(snmp::IpAddress(192, 0, 2, 1)).Type(), ValueType::IpAddress);
  EXPECT_EQ(Value(snmp::Counter32{1}).Type(), ValueType::Counter32);
  EXPECT_EQ(Value(snmp::Counter64{1}).Type(), ValueType::Counter64);
  EXPECT_EQ(Value(snmp::TimeTicks(1)).Type(), ValueType::TimeTicks);
  EXPECT_EQ(Value(21.5).Type(), ValueType::Opaque);
  EXPECT_EQ(Value(ValueType::NoSuchObject).Type(), ValueType::NoSuchObject);
}

TEST(Value, DiffersFromTheSameNumberOfAnotherType) {
  EXPECT_NE(Value(21), Value(21U));
  EXPECT_NE(Value(snmp::Counter32{1}), Value(1U));
  EXPECT_EQ(Value(21), Value(21));
  EXPECT_NE(Value("a"), Value("b"));
}

TEST(Value, ReadsAsWhatItWasMadeOf) {
  EXPECT_EQ(Value(-7).As<int>(), -7);
  EXPECT_EQ(Value(4000000000U).As<std::uint32_t>(), 4000000000U);
  EXPECT_EQ(Value(snmp::Counter64{1ULL << 40}).As<snmp::Counter64>().value,
            1ULL << 40);
  EXPECT_EQ(Value(Alarm::Open).As<Alarm>(), Alarm::Open);
  EXPECT_EQ(Value("text").As<std::string>(), "text");
  EXPECT_EQ(Value(21.5).As<double>(), 21.5);
  EXPECT_EQ(Value(snmp::Oid("1.3.6")).As<snmp::Oid>(), snmp::Oid("1.3.6"));
  EXPECT_TRUE(Value(snmp::Bits<Alarm>{Alarm::Open})
                  .As<snmp::Bits<Alarm>>()
                  .Has(Alarm::Open));
}

TEST(Value, SaysThatItIsOfAnotherType) {
  try {
    Value("text").As<int>();
    FAIL();
  } catch (const snmp::testing::WrongType& error) {
    EXPECT_STREQ(error.what(), "STRING \"text\" is no INTEGER");
  }
  EXPECT_THROW(Value(300).As<std::int8_t>(), snmp::testing::WrongType);
}

TEST(Value, ReadsWellInAMessage) {
  EXPECT_EQ(ToString(Value(-7)), "INTEGER -7");
  EXPECT_EQ(ToString(Value(7U)), "Gauge32 7");
  EXPECT_EQ(ToString(Value("attic")), "STRING \"attic\"");
  EXPECT_EQ(ToString(Value(std::string("\0\x1f", 2))), "STRING 00 1f");
  EXPECT_EQ(ToString(Value(snmp::IpAddress(192, 0, 2, 1))),
            "IpAddress 192.0.2.1");
  EXPECT_EQ(ToString(Value(snmp::Oid("1.3.6"))), "OID 1.3.6");
  EXPECT_EQ(ToString(Value(ValueType::NoSuchInstance)), "noSuchInstance");
  EXPECT_EQ(testing::PrintToString(Value(7U)), "Gauge32 7");
}

using snmp::testing::ErrorStatus;
using snmp::testing::Varbind;

const snmp::testing::Response kRefused{
    ErrorStatus::WrongLength, 2, {{"1.3.6.1", 5}}};
const snmp::testing::Response kAnswered{
    ErrorStatus::NoError, 0, {{"1.3.6.1", 5}}};

TEST(Response, MatchesAsItIs) {
  using snmp::testing::Has;
  using snmp::testing::IsRefused;
  using snmp::testing::Succeeded;
  using testing::ElementsAre;
  using testing::Not;
  EXPECT_THAT(kRefused, IsRefused(ErrorStatus::WrongLength, 2));
  EXPECT_THAT(kRefused, Not(IsRefused(ErrorStatus::WrongLength, 1)));
  EXPECT_THAT(kRefused, Not(IsRefused(ErrorStatus::WrongValue, 2)));
  EXPECT_THAT(kRefused, Not(Succeeded()));
  EXPECT_THAT(kRefused, Not(Has(ElementsAre(Varbind{"1.3.6.1", 5}))));
  EXPECT_THAT(kAnswered, Succeeded());
  EXPECT_THAT(kAnswered, Has(ElementsAre(Varbind{"1.3.6.1", 5})));
  EXPECT_THAT(kAnswered, Not(Has(ElementsAre(Varbind{"1.3.6.1", 6}))));
}

TEST(Notification, MatchesAsItIs) {
  using snmp::testing::Tells;
  using testing::ElementsAre;
  using testing::Not;
  const snmp::testing::Notification hot{"1.3.6", {{"1.3.6.1", 5}}};
  EXPECT_THAT(hot, Tells("1.3.6", ElementsAre(Varbind{"1.3.6.1", 5})));
  EXPECT_THAT(hot, Not(Tells("1.3.7", ElementsAre(Varbind{"1.3.6.1", 5}))));
  EXPECT_THAT(hot, Not(Tells("1.3.6", testing::IsEmpty())));
}

TEST(Response, ReadsWellInAMessage) {
  std::ostringstream text;
  text << snmp::testing::Response{
      ErrorStatus::WrongValue, 1, {{"1.3.6.1", 100}}};
  EXPECT_EQ(text.str(), "wrongValue at 1\n1.3.6.1 = INTEGER 100");
}

}  // namespace
