// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the irrigation service does for managers, without snmpd.
#include "irrigation/Irrigation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <snmpsubagent/testing.h>

#include <string>

namespace {

namespace snmp = snmpsubagent;
using snmp::testing::ErrorStatus;
using snmp::testing::Response;
using snmp::testing::Varbind;
using testing::ElementsAre;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

const std::string kObjects = "1.3.6.1.4.1.32473.4.1.";
const std::string kDailyLimit = kObjects + "2.0";
const std::string kEntry = kObjects + "3.1.";
const std::string kLawn = ".4.108.97.119.110";
const std::string kValve = kEntry + "2" + kLawn;
const std::string kOpens = kEntry + "3" + kLawn;
const std::string kCloses = kEntry + "4" + kLawn;
const std::string kRuns = kEntry + "5" + kLawn;
const std::string kStatus = kEntry + "6" + kLawn;

// The service, with a plan "lawn" for the first valve that a manager has made.
class TheIrrigation : public testing::Test {
 protected:
  void SetUp() override {
    CaptureStdout();
    master_.WaitForRegistrations(1);
    ASSERT_EQ(
        master_.Set({{kStatus, snmp::RowStatus::CreateAndGo}, {kValve, 1}})
            .error,
        ErrorStatus::NoError);
  }
  void TearDown() override { GetCapturedStdout(); }

  snmp::testing::Clock clock_;
  snmp::testing::Master master_;
  snmp::Agent agent_{"irrigation", {master_.Address()}};
  Irrigation irrigation_{agent_};
  snmp::testing::Loop loop_{agent_};
};

TEST_F(TheIrrigation, HasAPlanThatAManagerMakes) {
  EXPECT_THAT(
      master_.Walk(kObjects + "3"),
      ElementsAre(Varbind{kValve, 1}, Varbind{kOpens, 6U}, Varbind{kCloses, 8U},
                  Varbind{kRuns, snmp::Counter32{0}},
                  Varbind{kStatus, snmp::RowStatus::Active}));
}

TEST_F(TheIrrigation, NotifiesOfAPlanThatStarts) {
  const auto started = master_.NextNotification();
  EXPECT_EQ(started.name, snmp::Oid("1.3.6.1.4.1.32473.4.0.1"));
  EXPECT_THAT(started.varbinds,
              ElementsAre(Varbind{kValve, 1}, Varbind{kCloses, 8U}));
}

TEST_F(TheIrrigation, RefusesAPlanThatClosesBeforeItOpens) {
  EXPECT_EQ(master_.Set(kOpens, 9U), ErrorStatus::InconsistentValue);
  EXPECT_EQ(master_.Set({{kOpens, 9U}, {kCloses, 10U}}).error,
            ErrorStatus::NoError);
}

TEST_F(TheIrrigation, RefusesNamesThatItsMibDoesNotAllow) {
  const std::string noName = kEntry + "6.0";
  EXPECT_EQ(master_.Set(noName, snmp::RowStatus::CreateAndWait),
            ErrorStatus::NoCreation);
}

TEST_F(TheIrrigation, LeavesTheLimitAloneIfAValveIsStuck) {
  const Response response = master_.Set({{kDailyLimit, 900U}, {kValve, 4}});
  EXPECT_EQ(response.error, ErrorStatus::CommitFailed);
  EXPECT_EQ(response.index, 2U);
  EXPECT_EQ(master_.Get(kDailyLimit), 500U);
  EXPECT_EQ(master_.Get(kValve), 1);
}

TEST_F(TheIrrigation, CountsTheRunsOfAPlanThatIsActive) {
  irrigation_.BeginHour(6);
  irrigation_.BeginHour(7);
  EXPECT_EQ(master_.Get(kRuns), snmp::Counter32{1});
  EXPECT_EQ(master_.Set(kStatus, snmp::RowStatus::NotInService),
            ErrorStatus::NoError);
  irrigation_.BeginHour(6);
  EXPECT_EQ(master_.Get(kRuns), snmp::Counter32{1});
}

TEST_F(TheIrrigation, EndsAPlanThatAManagerDestroys) {
  EXPECT_EQ(master_.Set(kStatus, snmp::RowStatus::Destroy),
            ErrorStatus::NoError);
  EXPECT_THAT(master_.Walk(kObjects + "3"), ElementsAre());
}

}  // namespace
