// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Mistakes in snmpd's configuration, which no subagent can see: what a manager
// gets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Served.h"
#include "testkit/Command.h"

using testing::HasSubstr;

namespace {

// Communities that may do less than "public", and what is shown to them.
struct AMistakeInSnmpdConf : testing::Test {
  AMistakeInSnmpdConf()
      : served(
            "rocommunity reader 127.0.0.1\n"
            "rocommunity elsewhere 127.0.0.1 .1.3.6.1.2.1\n") {
    served.Start();
  }
  // What the tool says to that community about the scalar.
  std::string Said(const std::string& community, const std::string& tool,
                   const std::vector<std::string>& words) const {
    std::vector<std::string> command{
        tool,      "-v2c", "-c",
        community, "-r",   "0",
        "-t",      "1",    served.master.Address()};
    command.insert(command.end(), words.begin(), words.end());
    const testkit::CommandResult result =
        testkit::Command(command, {{"MIBS", ""}}).Result();
    return result.out + result.error;
  }

  Served served;
  snmp::Scalar<int> scalar{served.module, "1", 7, snmp::ReadWrite()};
};

TEST_F(AMistakeInSnmpdConf, IsAnotherCommunityWhichGetsNoAnswer) {
  EXPECT_THAT(Said("private", "snmpget", {Served::Name("1")}),
              HasSubstr("Timeout"));
  EXPECT_TRUE(served.agent.Connected());
  EXPECT_TRUE(served.module.IsRegistered());
}

TEST_F(AMistakeInSnmpdConf, IsAViewWithoutTheSubtreeWhichShowsNoObject) {
  EXPECT_THAT(Said("elsewhere", "snmpget", {Served::Name("1")}),
              HasSubstr("No Such Object"));
  EXPECT_EQ(served.Shown("1"), "INTEGER: 7");
}

TEST_F(AMistakeInSnmpdConf, IsACommunityThatMayOnlyReadWhichGetsNoAccess) {
  EXPECT_THAT(Said("reader", "snmpget", {Served::Name("1")}),
              HasSubstr("INTEGER: 7"));
  EXPECT_THAT(Said("reader", "snmpset", {Served::Name("1"), "i", "8"}),
              HasSubstr("noAccess"));
  EXPECT_EQ(scalar.Get(), 7);
}

TEST_F(AMistakeInSnmpdConf,
       IsANotificationThatNobodyReceivesWhichCountsAsSent) {
  snmp::Notification notification(served.module, "0.1");
  Lines outcomes;
  notification.Send({scalar}, [&](const snmp::NotificationResult& result) {
    outcomes.Add(result.outcome == snmp::NotificationResult::Sent ? "sent"
                                                                  : "not sent");
  });
  EXPECT_TRUE(outcomes.WaitFor("sent"));
  EXPECT_THAT(outcomes.All(), testing::ElementsAre("sent"));
}

}  // namespace
