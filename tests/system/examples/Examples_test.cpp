// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ExampleProcess.h"
#include "testkit/TrapReceiver.h"

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::EndsWith;

namespace {

const std::string kExamples = ".1.3.6.1.4.1.32473.3";

TEST(TheScalarExample, ShowsWhatItWorksWith) {
  ExampleProcess example("scalar");
  EXPECT_TRUE(example.Shows(kExamples + ".1.1.0", "INTEGER: 4"));
  EXPECT_TRUE(example.Shows(kExamples + ".1.2.0", "Counter32: "));
  EXPECT_TRUE(example.Shows(kExamples + ".1.3.0", "INTEGER: 1"));
  EXPECT_TRUE(example.Shows(kExamples + ".1.5.0", "\"P-200\""));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".1.4.0", "s", "pump 7"}).Succeeded());
  EXPECT_TRUE(example.Shows(kExamples + ".1.4.0", "\"pump 7\""));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheCallbackExample, BringsTheValueBackIntoRangeAndActsOnIt) {
  ExampleProcess example("callback");
  EXPECT_TRUE(example.Shows(kExamples + ".2.2.0", "INTEGER: 0"));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".2.1.0", "i", "150"}).Succeeded());
  EXPECT_TRUE(example.Says("valveWanted is 100"));
  EXPECT_TRUE(example.Shows(kExamples + ".2.1.0", "INTEGER: 100"));
  EXPECT_TRUE(example.Shows(kExamples + ".2.2.0", "INTEGER: 100"));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheIteratorTableExample, ShowsItsRowsAndRemovesOne) {
  ExampleProcess example("iterator_table");
  const std::string table = kExamples + ".3";
  EXPECT_TRUE(example.Shows(table + ".1.2.2", "Counter32: "));
  EXPECT_THAT(
      example.Manager().Objects(table + ".1.3"),
      ElementsAre(table + ".1.3.1 = INTEGER: 1", table + ".1.3.2 = INTEGER: 1",
                  table + ".1.3.10 = INTEGER: 1"));
  EXPECT_TRUE(example.Manager().Set({table + ".1.3.2", "i", "2"}).Succeeded());
  EXPECT_TRUE(example.Shows(table + ".1.3.2", "No Such Instance"));
  EXPECT_TRUE(example.Shows(table + ".1.3.10", "INTEGER: 1"));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheDataSetTableExample, ShowsItsEvents) {
  ExampleProcess example("dataset_table");
  const std::string table = kExamples + ".4";
  EXPECT_TRUE(example.Shows(table + ".1.2.2", "STRING: \"all is well\""));
  EXPECT_TRUE(example.Shows(table + ".1.2.1", "STRING: \"connected\""));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheTrapsExample, SendsOneByItselfAndTwoForASet) {
  const testkit::TrapReceiver receiver;
  ExampleProcess example("traps", receiver.SinkConfiguration());
  const std::string tank = kExamples + ".5";
  ASSERT_TRUE(receiver.WaitForCount(1));
  EXPECT_THAT(receiver.Received()[0],
              ContainsRegex(tank + ".0.1; " + tank + ".1.1.0 = INTEGER: .*; " +
                            tank + ".1.2.0 = STRING: \"cellar\"$"));
  EXPECT_TRUE(example.Manager().Set({tank + ".1.3.0", "i", "1"}).Succeeded());
  ASSERT_TRUE(receiver.WaitForCount(3));
  EXPECT_THAT(receiver.Received()[2],
              EndsWith(tank + ".0.2; " + tank + ".1.3.0 = INTEGER: 1"));
  EXPECT_EQ(example.End(), 0);
}

TEST(ThePlatformExample, LogsWithTheDevicesOwnLibrary) {
  ExampleProcess example("platform");
  EXPECT_TRUE(example.Shows(kExamples + ".6.1.0", "INTEGER: 21"));
  EXPECT_TRUE(example.Says(
      "device<6> SNMP: Node = temperature; Net-SNMP data node registration "
      "was successful."));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheEventLoopExample, IsToldOfConnectionsAndSetsInItsLoop) {
  ExampleProcess example("event_loop");
  EXPECT_TRUE(example.Says("connected, the goal is 0"));
  EXPECT_TRUE(example.Shows(kExamples + ".7.1.0", "INTEGER: "));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".7.2.0", "i", "3"}).Succeeded());
  EXPECT_TRUE(example.Says("connected, the goal is 3"));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsEventLoopExample, ServesManagersInItsLoop) {
  ExampleProcess example("objects_event_loop");
  EXPECT_TRUE(example.Says("connected"));
  EXPECT_TRUE(example.Shows(kExamples + ".21.1.0", "INTEGER: 1"));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".21.2.0", "i", "3"}).Succeeded());
  EXPECT_TRUE(example.Says("the goal is 3"));
  EXPECT_FALSE(
      example.Manager().Set({kExamples + ".21.2.0", "i", "101"}).Succeeded());
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsSdEventExample, ServesManagersInItsLoop) {
  ExampleProcess example("objects_sd_event");
  EXPECT_TRUE(example.Shows(kExamples + ".22.1.0", "INTEGER: 1"));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".22.2.0", "i", "3"}).Succeeded());
  EXPECT_TRUE(example.Shows(kExamples + ".22.2.0", "INTEGER: 3"));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsLaterExample, AnswersWhenItCan) {
  ExampleProcess example("objects_later");
  EXPECT_TRUE(example.Shows(kExamples + ".23.1.0", "INTEGER: 1013"));
  EXPECT_TRUE(
      example.Manager().Set({kExamples + ".23.2.0", "i", "50"}).Succeeded());
  EXPECT_TRUE(example.Shows(kExamples + ".23.2.0", "INTEGER: 50"));
  EXPECT_TRUE(example.Shows(kExamples + ".23.3.0", "\"boiler room\""));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsTableExample, ShowsAndSwitchesWhatTheServiceHas) {
  ExampleProcess example("objects_table");
  const std::string entry = kExamples + ".24.1.1";
  const std::string feed = ".4.102.101.101.100";
  EXPECT_TRUE(example.Shows(entry + ".2" + feed, "INTEGER: 120"));
  EXPECT_TRUE(
      example.Manager().Set({entry + ".3" + feed, "i", "1"}).Succeeded());
  EXPECT_TRUE(example.Says("feed is off"));
  EXPECT_FALSE(
      example.Manager().Set({entry + ".3" + feed, "i", "3"}).Succeeded());
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsLoadedTableExample, ListsTheFilesOfAFolder) {
  ExampleProcess example("objects_loaded_table");
  const std::string passwd = ".6.112.97.115.115.119.100";
  EXPECT_TRUE(example.Shows(kExamples + ".25.1.1.2" + passwd, "Counter64: "));
  EXPECT_EQ(example.End(), 0);
}

TEST(TheObjectsRowStatusExample, LetsManagersMakeAndDestroyUsers) {
  ExampleProcess example("objects_rowstatus");
  const std::string entry = kExamples + ".26.1.1";
  const std::string bob = ".3.98.111.98";
  EXPECT_TRUE(example.Shows(entry + ".4.4.114.111.111.116", "INTEGER: 1"));
  EXPECT_FALSE(
      example.Manager().Set({entry + ".4" + bob, "i", "4"}).Succeeded());
  EXPECT_TRUE(example.Manager()
                  .Set({entry + ".4" + bob, "i", "4", entry + ".2" + bob, "s",
                        "/bin/sh"})
                  .Succeeded());
  EXPECT_TRUE(example.Says("bob may log in"));
  EXPECT_TRUE(example.Shows(entry + ".3" + bob, "Gauge32: 1000"));
  EXPECT_TRUE(
      example.Manager().Set({entry + ".4" + bob, "i", "6"}).Succeeded());
  EXPECT_TRUE(example.Says("bob is locked out"));
  EXPECT_EQ(example.End(), 0);
}

}  // namespace
