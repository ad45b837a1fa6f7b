// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Numbers of every SMIv2 type, from every source of a value, as snmpget and
// snmptrapd show them and snmpset writes them.
#include <cstdint>

#include "EverySource.h"

namespace {

enum class Mode : std::int32_t { Off = -1, Heat = 2, Cool = 2147483647 };

TEST(AnInteger32, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::int32_t>({
      {0, "INTEGER: 0", "i 0"},
      {INT32_MIN, "INTEGER: -2147483648", "i -2147483648"},
      {-1, "INTEGER: -1", "i -1"},
      {255, "INTEGER: 255", "i 255"},
      {INT32_MAX, "INTEGER: 2147483647", "i 2147483647"},
  });
}

TEST(AnInt8, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::int8_t>({
      {-128, "INTEGER: -128", "i -128"},
      {-1, "INTEGER: -1", "i -1"},
      {127, "INTEGER: 127", "i 127"},
  });
}

TEST(AnInt16, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::int16_t>({
      {INT16_MIN, "INTEGER: -32768", "i -32768"},
      {INT16_MAX, "INTEGER: 32767", "i 32767"},
  });
}

TEST(AnUnsigned32, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::uint32_t>({
      {0, "Gauge32: 0", "u 0"},
      {2147483648U, "Gauge32: 2147483648", "u 2147483648"},
      {UINT32_MAX, "Gauge32: 4294967295", "u 4294967295"},
  });
}

TEST(AUint8, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::uint8_t>({
      {0, "Gauge32: 0", "u 0"},
      {255, "Gauge32: 255", "u 255"},
  });
}

TEST(AUint16, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::uint16_t>({
      {UINT16_MAX, "Gauge32: 65535", "u 65535"},
  });
}

TEST(AnEnumeration, IsShownAndTakenFromEverySource) {
  CheckWithTools<Mode>({
      {Mode::Off, "INTEGER: -1", "i -1"},
      {Mode::Heat, "INTEGER: 2", "i 2"},
      {Mode::Cool, "INTEGER: 2147483647", "i 2147483647"},
  });
}

TEST(ATruthValue, IsShownAndTakenFromEverySource) {
  CheckWithTools<bool>({
      {true, "INTEGER: 1", "i 1"},
      {false, "INTEGER: 2", "i 2"},
  });
}

TEST(ACounter32, IsShownFromEverySource) {
  CheckWithTools<snmp::Counter32>({
      {{0}, "Counter32: 0"},
      {{2147483648U}, "Counter32: 2147483648"},
      {{UINT32_MAX}, "Counter32: 4294967295"},
  });
}

TEST(ACounter64, IsShownFromEverySource) {
  CheckWithTools<snmp::Counter64>({
      {{0}, "Counter64: 0"},
      {{4294967296U}, "Counter64: 4294967296"},
      {{9223372036854775808U}, "Counter64: 9223372036854775808"},
      {{UINT64_MAX}, "Counter64: 18446744073709551615"},
  });
}

TEST(ATimeTicks, IsShownAndTakenFromEverySource) {
  using snmp::TimeTicks;
  CheckWithTools<TimeTicks>({
      {TimeTicks(0), "Timeticks: (0) 0:00:00.00", "t 0"},
      {TimeTicks(2147483648U), "Timeticks: (2147483648) 248 days, 13:13:56.48",
       "t 2147483648"},
      {TimeTicks(UINT32_MAX), "Timeticks: (4294967295) 497 days, 2:27:52.95",
       "t 4294967295"},
  });
}

TEST(AFloat, IsShownAndTakenFromEverySource) {
  CheckWithTools<float>({
      {0, "Opaque: Float: 0.000000", "F 0"},
      {-1.5F, "Opaque: Float: -1.500000", "F -1.5"},
      {16777215.0F, "Opaque: Float: 16777215.000000", "F 16777215"},
  });
}

TEST(ADouble, IsShownAndTakenFromEverySource) {
  CheckWithTools<double>({
      {0, "Opaque: Float: 0.000000", "D 0"},
      {-0.5, "Opaque: Float: -0.500000", "D -0.5"},
      {9007199254740991.0, "Opaque: Float: 9007199254740991.000000",
       "D 9007199254740991"},
  });
}

TEST(AnIntegerOfTheApplications, IsShownAsTheCounterThatItIsSaidToBe) {
  Served served;
  std::uint64_t octets = UINT64_MAX;
  std::atomic<std::uint32_t> packets{UINT32_MAX};
  const snmp::Scalar first(served.module, "1",
                           snmp::As<snmp::Counter64>(octets));
  const snmp::Scalar second(served.module, "2",
                            snmp::As<snmp::Counter32>(packets));
  served.Start();
  EXPECT_EQ(served.Shown("1"), "Counter64: 18446744073709551615");
  EXPECT_EQ(served.Shown("2"), "Counter32: 4294967295");
}

TEST(ATestAndIncr, IsRaisedByOneForTheManagerThatKnowsItsValue) {
  Served served;
  snmp::Scalar lock(served.module, "1", snmp::TestAndIncr{2147483646},
                    snmp::ReadWrite());
  served.Start();
  const std::string name = Served::Name("1");
  EXPECT_EQ(served.Shown("1"), "INTEGER: 2147483646");
  EXPECT_EQ(served.Set({name, "i", "5"}), "inconsistentValue " + name);
  EXPECT_EQ(served.Set({name, "i", "2147483646"}), "None");
  EXPECT_EQ(served.Shown("1"), "INTEGER: 2147483647");
  EXPECT_EQ(served.Set({name, "i", "2147483647"}), "None");
  EXPECT_EQ(served.Shown("1"), "INTEGER: 0");
}

TEST(ATimeStamp, IsShownAsTheMasterAgentsUpTimeAtThatMoment) {
  Served served;
  snmp::TimeStamp happened;
  const snmp::Scalar stamp(served.module, "1", happened);
  served.Start();
  EXPECT_EQ(served.Shown("1"), "Timeticks: (0) 0:00:00.00");
  const std::uint32_t before = served.agent.SysUpTime();
  const snmp::TimeStamp now = snmp::TimeStamp::Now();
  const std::uint32_t after = served.agent.SysUpTime();
  {
    const snmp::AgentLock lock = served.agent.Lock();
    happened = now;
  }
  const std::string shown = served.Shown("1");
  ASSERT_THAT(shown, testing::StartsWith("Timeticks: ("));
  const auto ticks = std::stoul(shown.substr(shown.find('(') + 1));
  EXPECT_GE(ticks, before);
  EXPECT_LE(ticks, after);
}

}  // namespace
