// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Scalars.h"
#include "support/Session.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using support::AddIntScalar;
using support::ScalarOid;
using support::ScalarsOid;
using support::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

// Served anew each time: to the same numbers the same values.
std::vector<std::string> ThreeScalars() {
  return {ScalarOid(1) + " = INTEGER: 10", ScalarOid(2) + " = INTEGER: 20",
          ScalarOid(3) + " = INTEGER: 30"};
}

class ASession : public testing::Test {
 protected:
  ASession() {
    for (int number : {1, 2, 3}) {
      AddIntScalar(number, "scalar" + std::to_string(number), 10 * number);
    }
  }

  // Ends the master agent and waits until the subagent has noticed.
  void LoseMaster() {
    session_.Master().End();
    ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  }

  // Waits until the nodes are served. The agent library registers them again
  // after it has reported the session.
  bool WaitUntilServed() {
    return WaitFor(
        [this] {
          return session_.Manager().Objects(ScalarsOid()) == ThreeScalars();
        },
        Deadlines::Session());
  }

  // Starts it again and waits until the subagent is back.
  void RegainMaster() {
    session_.Master().Start();
    ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0, 1}));
  }

  Session session_;
};

TEST_F(ASession, ServesTheNodesThatWereBuiltBeforeItCameUp) {
  session_.Connect();
  EXPECT_EQ(session_.Manager().Objects(ScalarsOid()), ThreeScalars());
}

TEST_F(ASession, TellsReceiversOfItsComingLossAndReturn) {
  session_.Connect();
  LoseMaster();
  EXPECT_FALSE(session_.SubAgent().Connected());
  RegainMaster();
  EXPECT_TRUE(session_.SubAgent().Connected());
  EXPECT_EQ(session_.SubAgent().Connections(), 2);
}

TEST_F(ASession, ServesAllNodesAgainWhenTheMasterAgentIsBack) {
  session_.Connect();
  LoseMaster();
  RegainMaster();
  EXPECT_TRUE(WaitUntilServed());
}

// Each time as soon as it is back, while the nodes are still registered again.
TEST_F(ASession, SurvivesThatTheMasterAgentIsKilledAgainAndAgain) {
  session_.Connect();
  std::vector<int> states = {1};
  for (int round = 0; round < 3; ++round) {
    session_.Master().Kill();
    states.push_back(0);
    ASSERT_TRUE(session_.Receiver().WaitForStates(states));
    session_.Master().Start();
    states.push_back(1);
    ASSERT_TRUE(session_.Receiver().WaitForStates(states));
  }
  EXPECT_TRUE(WaitUntilServed());
}

TEST_F(ASession, ServesANodeThatWasBuiltWhileTheMasterAgentWasAway) {
  session_.Connect();
  LoseMaster();
  AddIntScalar(4, "late", 40);
  RegainMaster();
  EXPECT_THAT(session_.Manager().Get(ScalarOid(4)).out,
              HasSubstr("INTEGER: 40"));
}

TEST_F(ASession, AnswersWithAnErrorForANodeDeletedWhileTheMasterAgentWasAway) {
  session_.Connect();
  LoseMaster();
  delete NetSNMPNode::nodeMap_->at("scalar2");
  RegainMaster();
  EXPECT_TRUE(WaitFor(
      [this] { return !session_.Manager().Get(ScalarOid(2)).Succeeded(); },
      Deadlines::Session()));
  AddIntScalar(2, "scalar2", 20);
  EXPECT_TRUE(WaitUntilServed());
}

TEST_F(ASession, ComesUpWhenTheMasterAgentIsStartedLater) {
  session_.Master().End();
  ASSERT_TRUE(session_.SubAgent().StartAndInitialize());
  EXPECT_FALSE(session_.SubAgent().Connected());
  session_.Master().Start();
  ASSERT_TRUE(session_.Receiver().WaitForStates({1}));
  EXPECT_EQ(session_.Manager().Objects(ScalarsOid()), ThreeScalars());
}

TEST_F(ASession, TellsReceiversInTheOrderOfTheirNames) {
  std::vector<std::string> told;
  struct Named : ISNMPSubAgentCallback {
    Named(const std::string& name, std::vector<std::string>& told)
        : name_(name), told_(told) {}
    void SubAgentStateChanged(int) override { told_.push_back(name_); }
    std::string name_;
    std::vector<std::string>& told_;
  };
  Named b("b", told), a("a", told), unused("unused", told);
  session_.SubAgent().RegisterSubAgentCallback("b", &b);
  session_.SubAgent().RegisterSubAgentCallback("a", &a);
  session_.SubAgent().RegisterSubAgentCallback("a", &unused);
  session_.SubAgent().RegisterSubAgentCallback("none", nullptr);
  session_.Connect();
  session_.SubAgent().Stop();
  EXPECT_THAT(told, ElementsAre("a", "b"));
}

// The master agent keeps the connection open and does not respond: only the
// missing response to a ping shows that it is gone.
TEST(AFrozenMasterAgent, CountsAsLostAndComesBack) {
  Session session(
      "agentXPingInterval 1\n"
      "agentXTimeout 1\n"
      "agentXRetries 1\n");
  AddIntScalar(1, "scalar", 10);
  session.Connect();
  session.Master().Freeze();
  ASSERT_TRUE(session.Receiver().WaitForStates({1, 0}));
  session.Master().Thaw();
  ASSERT_TRUE(session.Receiver().WaitForStates({1, 0, 1}));
  const auto isServed = [&session] {
    return session.Manager().Get(ScalarOid(1)).out ==
           ScalarOid(1) + " = INTEGER: 10\n";
  };
  EXPECT_TRUE(WaitFor(isServed, Deadlines::Session()));
}

}  // namespace
