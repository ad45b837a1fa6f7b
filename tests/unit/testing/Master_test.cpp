// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <system_error>
#include <thread>

#include "Thermometer.h"
#include "testkit/ScratchDirectory.h"

namespace {

using snmp::testing::ErrorStatus;
using snmp::testing::Response;
using snmp::testing::Varbind;
using testing::ElementsAre;

const snmp::Oid kSubtree("1.3.6.1.4.1.32473.2");
const snmp::Oid kOther("1.3.6.1.4.1.32473.3");

// A master agent and a service that runs by itself.
class Master : public testing::Test {
 protected:
  Master() {
    agent_.Start();
    master_.WaitForRegistrations(1);
  }

  snmp::testing::Master master_;
  snmp::Agent agent_{"thermometer", At(master_)};
  Thermometer service_{agent_};
};

TEST_F(Master, KnowsWhatIsRegisteredAndByWhom) {
  const auto all = master_.Registrations();
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0].subtree, kSubtree);
  EXPECT_EQ(all[0].priority, 127U);
  EXPECT_EQ(all[0].agent, "thermometer");
}

TEST_F(Master, GetsValuesWithTheirTypes) {
  EXPECT_EQ(master_.Get(kCelsius), 21);
  EXPECT_EQ(master_.Get(kPlace), "boiler room");
}

TEST_F(Master, GetsSeveralInTheirOrder) {
  const Response response = master_.Get({kPlace, kCelsius});
  EXPECT_THAT(response.varbinds, ElementsAre(Varbind{kPlace, "boiler room"},
                                             Varbind{kCelsius, 21}));
}

TEST_F(Master, SaysWhatIsNotThere) {
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.2.1.7"),
            snmp::ValueType::NoSuchInstance);
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.2.9.0"),
            snmp::ValueType::NoSuchObject);
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.99.1.0"),
            snmp::ValueType::NoSuchObject);
  EXPECT_EQ(master_.GetNext("1.3.6.1.4.1.32473.99").value,
            snmp::ValueType::EndOfMibView);
}

TEST_F(Master, WalksInOrder) {
  EXPECT_THAT(NamesOf(master_.Walk(kSubtree), kSubtree),
              ElementsAre("1.0", "2.0", "3.0"));
}

TEST_F(Master, AnswersGetBulkWithRepetitions) {
  const Response response = master_.GetBulk(1, 2, {kSubtree, kSubtree, kLimit});
  EXPECT_THAT(NamesOf(response.varbinds, kSubtree),
              ElementsAre("1.0", "1.0", "3.0", "2.0", "3.0"));
}

TEST_F(Master, SetsWhatAllObjectsAccept) {
  const Response response = master_.Set({{kLimit, 70}, {kPlace, "attic"}});
  EXPECT_TRUE(response.Succeeded()) << response;
  EXPECT_EQ(service_.limit.Get(), 70);
  EXPECT_EQ(service_.place.Get(), "attic");
}

TEST_F(Master, NamesTheVarbindThatIsRefused) {
  const Response response = master_.Set({{kLimit, 70}, {kPlace, ""}});
  EXPECT_EQ(response.error, ErrorStatus::WrongLength);
  EXPECT_EQ(response.index, 2U);
  EXPECT_EQ(service_.limit.Get(), 60);
}

TEST_F(Master, RefusesToSetWhatNobodyHas) {
  const Response response =
      master_.Set({{kLimit, 70}, {"1.3.6.1.4.1.32473.99.1.0", 1}});
  EXPECT_EQ(response.error, ErrorStatus::NotWritable);
  EXPECT_EQ(response.index, 2U);
  EXPECT_EQ(service_.limit.Get(), 60);
}

TEST_F(Master, UndoesASetThatCannotBeCommitted) {
  service_.place.Apply([](const std::string&) { return false; });
  EXPECT_EQ(master_.Set({{kLimit, 70}, {kPlace, "attic"}}).error,
            ErrorStatus::CommitFailed);
  EXPECT_EQ(service_.limit.Get(), 60);
}

TEST_F(Master, HasToldTheServiceThatASetIsFinalWhenItReturns) {
  int final = 0;
  service_.limit.Changed([&final](int value) { final = value; });
  ASSERT_EQ(master_.Set(kLimit, 70), ErrorStatus::NoError);
  EXPECT_EQ(final, 70);
}

TEST_F(Master, ThrowsTheErrorOfARequestForOneValue) {
  snmp::Module module(agent_, ToString(kOther));
  const snmp::Scalar broken(module, "1", []() -> int { throw 1; });
  master_.WaitForRegistrations(2);
  try {
    master_.Get("1.3.6.1.4.1.32473.3.1.0");
    FAIL();
  } catch (const snmp::testing::RequestFailed& failure) {
    EXPECT_EQ(failure.response.error, ErrorStatus::GenErr);
    EXPECT_EQ(failure.response.index, 1U);
  }
}

TEST_F(Master, ReceivesNotificationsInOrder) {
  service_.overheated.Send({service_.celsius});
  service_.overheated.Send();
  const auto first = master_.NextNotification();
  EXPECT_EQ(first.name, snmp::Oid(kOverheated));
  EXPECT_THAT(first.varbinds, ElementsAre(Varbind{kCelsius, 21}));
  EXPECT_TRUE(master_.NextNotification().varbinds.empty());
  EXPECT_TRUE(master_.TakeNotifications().empty());
}

TEST_F(Master, AsksAnotherRequestWhileOneIsPending) {
  snmp::Module module(agent_, ToString(kOther));
  std::optional<snmp::Later<int>> reply;
  snmp::Scalar slow(module, "1",
                    [&reply](const snmp::Later<int>& later) { reply = later; });
  master_.WaitForRegistrations(2);
  auto pending = master_.StartGet({"1.3.6.1.4.1.32473.3.1.0"});
  EXPECT_EQ(master_.Get(kCelsius), 21);
  EXPECT_FALSE(pending.IsAnswered());
  {
    const snmp::AgentLock lock = agent_.Lock();
    ASSERT_TRUE(reply);
  }
  reply->Answer(5);
  EXPECT_EQ(pending.Result().varbinds.at(0).value, 5);
}

TEST_F(Master, SeesASubagentLeave) {
  agent_.Stop();
  master_.WaitUntilAlone();
  EXPECT_EQ(master_.Get(kCelsius), snmp::ValueType::NoSuchObject);
}

TEST_F(Master, IsFoundAgainAfterItWasDown) {
  master_.GoDown();
  EXPECT_TRUE(master_.Registrations().empty());
  master_.ComeUp();
  master_.WaitForRegistrations(1);
  EXPECT_EQ(master_.Get(kCelsius), 21);
}

TEST_F(Master, ShowsCapabilities) {
  agent_.AddCapability("1.3.6.1.4.1.32473.2.7", "thermometers");
  snmp::Module module(agent_, ToString(kOther));
  master_.WaitForRegistrations(2);
  ASSERT_EQ(master_.Capabilities().size(), 1U);
  EXPECT_EQ(master_.Capabilities()[0].description, "thermometers");
}

TEST_F(Master, AsksInAContext) {
  snmp::ModuleOptions options;
  options.context = "attic";
  snmp::Module module(agent_, ToString(kOther), options);
  snmp::Scalar value(module, "1", 7);
  master_.WaitForRegistrations(2);
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.3.1.0"),
            snmp::ValueType::NoSuchObject);
  master_.SetContext("attic");
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.3.1.0"), 7);
  EXPECT_EQ(master_.Get(kCelsius), snmp::ValueType::NoSuchObject);
}

TEST(MasterAlone, WaitsForNothing) {
  snmp::testing::Master master;
  EXPECT_NO_THROW(master.WaitForRegistrations(0));
  EXPECT_NO_THROW(master.WaitUntilAlone());
}

TEST(MasterAlone, SaysThatItsSocketHasNoRoom) {
  const testkit::ScratchDirectory directory;
  const auto deep = directory.Path() / std::string(100, 'x');
  std::filesystem::create_directory(deep);
  setenv("TMPDIR", deep.c_str(), 1);
  EXPECT_THROW(snmp::testing::Master(), std::system_error);
  unsetenv("TMPDIR");
}

TEST(MasterAlone, ServesAnAgentThatRunsOnAThreadOfTheTest) {
  snmp::testing::Master master;
  snmp::Agent agent("thermometer", At(master));
  const Thermometer service(agent);
  std::thread running([&agent] { agent.Run(); });
  master.WaitForRegistrations(1);
  EXPECT_EQ(master.Get(kCelsius), 21);
  agent.Stop();
  running.join();
}

// Two services with a master agent.
class TwoSubagents : public testing::Test {
 protected:
  TwoSubagents() {
    first_.Start();
    second_.Start();
    master_.WaitForRegistrations(2);
  }

  static constexpr char kSecondLimit[] = "1.3.6.1.4.1.32473.3.2.0";

  snmp::testing::Master master_;
  snmp::Agent first_{"first", At(master_)};
  snmp::Agent second_{"second", At(master_)};
  Thermometer one_{first_};
  Thermometer two_{second_, "1.3.6.1.4.1.32473.3"};
};

TEST_F(TwoSubagents, AreAskedInOneRequest) {
  two_.limit.Set(50);
  const Response response = master_.Get({kSecondLimit, kLimit});
  EXPECT_THAT(response.varbinds,
              ElementsAre(Varbind{kSecondLimit, 50}, Varbind{kLimit, 60}));
}

TEST_F(TwoSubagents, AreWalkedOneAfterTheOther) {
  EXPECT_EQ(master_.Walk("1.3.6.1.4.1.32473").size(), 6U);
  EXPECT_EQ(master_.GetNext(kPlace).name, snmp::Oid("1.3.6.1.4.1.32473.3.1.0"));
}

TEST_F(TwoSubagents, AreSetTogether) {
  EXPECT_TRUE(master_.Set({{kLimit, 70}, {kSecondLimit, 71}}).Succeeded());
  EXPECT_EQ(one_.limit.Get(), 70);
  EXPECT_EQ(two_.limit.Get(), 71);
}

TEST_F(TwoSubagents, ChangeNothingIfOneRefuses) {
  const Response response = master_.Set({{kLimit, 70}, {kSecondLimit, 100}});
  EXPECT_EQ(response.error, ErrorStatus::WrongValue);
  EXPECT_EQ(response.index, 2U);
  EXPECT_EQ(one_.limit.Get(), 60);
}

TEST_F(TwoSubagents, UndoWhatOneCannotCommit) {
  two_.limit.Apply([](int) { return false; });
  const Response response = master_.Set({{kLimit, 70}, {kSecondLimit, 71}});
  EXPECT_EQ(response.error, ErrorStatus::CommitFailed);
  EXPECT_EQ(response.index, 2U);
  EXPECT_EQ(one_.limit.Get(), 60);
  EXPECT_EQ(two_.limit.Get(), 60);
}

TEST_F(TwoSubagents, CannotRegisterTheSame) {
  snmp::Module module(second_, ToString(kSubtree));
  while (second_.Refusals().empty()) std::this_thread::yield();
  EXPECT_EQ(second_.Refusals()[0].reason, "duplicateRegistration");
}

TEST_F(TwoSubagents, HaveTheirOIDsByTheLongestSubtree) {
  snmp::Module module(second_, "1.3.6.1.4.1.32473.2.2");
  snmp::Scalar instead(module, ".1.3.6.1.4.1.32473.2.2", 5);
  master_.WaitForRegistrations(3);
  EXPECT_EQ(master_.Get(kLimit), 5);
  EXPECT_EQ(master_.Get(kPlace), "boiler room");
  EXPECT_EQ(master_.Walk(kSubtree).size(), 3U);
}

}  // namespace
