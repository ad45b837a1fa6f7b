// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Tests of a service with GoogleTest: no snmpd, no port, no waiting.
#include "Boiler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <snmpsubagent/testing.h>
#include <snmpsubagent/testing/Matchers.h>

#include <chrono>

namespace snmp = snmpsubagent;
using snmp::testing::ErrorStatus;
using snmp::testing::Varbind;
using testing::ElementsAre;

namespace {

const char kCelsius[] = "1.3.6.1.4.1.32473.3.30.1.0";
const char kLimit[] = "1.3.6.1.4.1.32473.3.30.2.0";
const char kHot[] = "1.3.6.1.4.1.32473.3.30.0.1";

class BoilerTest : public testing::Test {
 protected:
  BoilerTest() { master.WaitForRegistrations(1); }

  snmp::testing::Clock clock;  // stands still
  snmp::testing::Master master;
  snmp::Agent agent{"boiler", {master.Address()}};
  Boiler boiler{agent};
  snmp::testing::Loop loop{agent};  // serves the agent whenever the test waits
};

TEST_F(BoilerTest, ShowsWhatWasMeasuredLast) {
  boiler.Measured(55);
  EXPECT_EQ(master.Get(kCelsius), 55);
}

TEST_F(BoilerTest, TakesALimitUpTo90) {
  EXPECT_EQ(master.Set(kLimit, 90), ErrorStatus::NoError);
  EXPECT_EQ(master.Set(kLimit, 91), ErrorStatus::WrongValue);
  EXPECT_EQ(master.Set(kLimit, "hot"), ErrorStatus::WrongType);
  EXPECT_EQ(master.Get(kLimit), 90);
}

TEST_F(BoilerTest, TellsWhenItGetsTooHot) {
  boiler.Measured(81);
  EXPECT_THAT(master.NextNotification(),
              snmp::testing::Tells(kHot, ElementsAre(Varbind{kCelsius, 81},
                                                     Varbind{kLimit, 80})));
}

TEST_F(BoilerTest, IsServedAgainAfterAnHourWithoutMaster) {
  master.GoDown();
  clock.Advance(std::chrono::hours(1));
  master.ComeUp();
  clock.Advance(snmp::AgentOptions().lastRetry);
  EXPECT_EQ(master.Get(kCelsius), 20);
}

}  // namespace
