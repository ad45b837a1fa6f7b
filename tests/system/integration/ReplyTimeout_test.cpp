// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a subagent with a reply timeout does when its master agent does not
// respond.
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "FrozenMasterTest.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTrapNode.h"
#include "support/AgentXConnection.h"

using support::AddIntScalar;
using support::ScalarOid;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

using std::chrono::milliseconds;

class AFrozenMaster : public FrozenMasterTest {};

TEST_F(AFrozenMaster, HoldsUpAllRegistrationsTogetherForOneReply) {
  ConnectAndFreeze();
  const milliseconds taken = TimeOf([] {
    // Keeps a ping from finding out in between.
    const NetSNMPAgentGuard guard;
    for (unsigned long i = 2; i <= 40; ++i) {
      AddIntScalar(i, "scalar" + std::to_string(i), 1);
    }
  });
  EXPECT_LT(taken, kAnything);
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  ExpectServedAfterThaw({ScalarOid(1), ScalarOid(2), ScalarOid(40)});
}

TEST_F(AFrozenMaster, IsFoundLostByAPingWithoutHoldingUpAnybody) {
  ConnectAndFreeze();
  LongestWait wait;
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  EXPECT_FALSE(session_.SubAgent().Connected());
  EXPECT_LT(wait.End(), kAnything);
  ExpectServedAfterThaw({ScalarOid(1)});
}

TEST_F(AFrozenMaster, HoldsUpNoTrapWhenItReadsNoneOfThem) {
  auto* const first = AddIntScalar(2, "second", 2);
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 9};
  auto* const trap = new NetSNMPTrapNode(oid, 8, "trap");
  session_.Connect();
  // Few traps are enough to fill it.
  const int size = 1;
  setsockopt(
      support::AgentXConnection(session_.Master().AgentXPort()).Descriptor(),
      SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
  session_.Master().Freeze();
  milliseconds longest{0};
  EXPECT_TRUE(WaitFor(
      [&] {
        for (int i = 0; i < 100; ++i) {
          longest =
              std::max(longest, TimeOf([&] { trap->TriggerV2Trap(first); }));
        }
        return !session_.SubAgent().Connected();
      },
      Deadlines::Load()));
  EXPECT_LT(longest, kAnything);
  ExpectServedAfterThaw({ScalarOid(1), ScalarOid(2)});
}

TEST_F(AFrozenMaster, DoesNotKeepTheSubAgentFromStopping) {
  ConnectAndFreeze();
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  EXPECT_LT(TimeOf([this] { session_.SubAgent().Stop(); }), kAnything);
}

class AnImpatientSubAgent : public FrozenMasterTest {};

TEST_F(AnImpatientSubAgent, MayStartBeforeItsMasterAgent) {
  session_.Master().Kill();
  ASSERT_TRUE(session_.SubAgent().StartAndInitialize());
  EXPECT_FALSE(session_.SubAgent().Connected());
  session_.Master().Start();
  ASSERT_TRUE(session_.SubAgent().WaitForConnections(1));
  EXPECT_TRUE(
      WaitFor([&] { return session_.Manager().Get(ScalarOid(1)).Succeeded(); },
              Deadlines::Session()));
}

TEST(AReplyTimeout, IsTakenFromOneMillisecondTo30Minutes) {
  support::TestSubAgent subAgent(1);
  using std::chrono::minutes;
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(0), 0));
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(-1), 0));
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(1), -1));
  EXPECT_FALSE(subAgent.SetReplyTimeout(minutes(30) + milliseconds(1), 0));
  EXPECT_EQ(subAgent.replyTimeout_, milliseconds(0));
  EXPECT_TRUE(subAgent.SetReplyTimeout(milliseconds(1), 0));
  EXPECT_TRUE(subAgent.SetReplyTimeout(minutes(30), 5));
  EXPECT_EQ(subAgent.replyTimeout_, minutes(30));
  EXPECT_EQ(subAgent.replyRetries_, 5);
}

TEST(APingInterval, IsTakenFromOneSecondToADay) {
  support::TestSubAgent subAgent(1);
  using std::chrono::hours;
  using std::chrono::seconds;
  EXPECT_FALSE(subAgent.SetPingInterval(seconds(0)));
  EXPECT_FALSE(subAgent.SetPingInterval(seconds(-1)));
  EXPECT_FALSE(subAgent.SetPingInterval(hours(24) + seconds(1)));
  EXPECT_EQ(subAgent.pingInterval_, seconds(0));
  EXPECT_TRUE(subAgent.SetPingInterval(seconds(1)));
  EXPECT_TRUE(subAgent.SetPingInterval(hours(24)));
  EXPECT_EQ(subAgent.pingInterval_, hours(24));
}

TEST_F(AFrozenMaster, IsWaitedForAsSetBeforeTheStartOnly) {
  session_.Connect();
  EXPECT_FALSE(session_.SubAgent().SetReplyTimeout(milliseconds(1), 0));
  EXPECT_FALSE(session_.SubAgent().SetPingInterval(std::chrono::seconds(5)));
  EXPECT_EQ(session_.SubAgent().replyTimeout_, kReplyTimeout);
}

}  // namespace
