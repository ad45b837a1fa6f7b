// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "StandingRequestsTest.h"

namespace snmpsubagent::agentx {
namespace {

class AWithdrawnRequest : public StandingRequestsTest {};
class WithdrawnAgentCaps : public StandingRequestsTest {};

TEST_F(AWithdrawnRequest, IsForgottenBeforeItIsSent) {
  Register(kSubtree);
  requests.Withdraw(1);
  requests.SessionOpened();
  EXPECT_THAT(Sent(), IsEmpty());
  requests.Withdraw(Register(kSubtree));
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(AWithdrawnRequest, IsForgottenWhenItWasRefused) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  Refuse(1);
  requests.Withdraw(1);
  EXPECT_THAT(Refused(), IsEmpty());
  Pass(seconds(1));
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_FALSE(requests.NextRetry());
}

TEST_F(AWithdrawnRequest, IsNotListedAsRefusedWhileItIsAskedForAgain) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  Refuse(1);
  Pass(seconds(1));
  Sent();
  requests.Withdraw(1);
  EXPECT_THAT(Refused(), IsEmpty());
  EXPECT_FALSE(requests.FindRefused(1));
}

TEST_F(AWithdrawnRequest, IsWithdrawnOnceFromTheMasterAgent) {
  Register(kSubtree, "rack");
  requests.SessionOpened();
  Sent();
  Take(1);
  requests.Withdraw(1);
  requests.Withdraw(1);
  EXPECT_FALSE(requests.IsTaken(1));
  const auto next = requests.Next();
  ASSERT_TRUE(next);
  EXPECT_EQ(std::get<Registration>(*next->content).context, "rack");
  EXPECT_THAT(Sent(), ElementsAre("-1"));
  requests.Withdraw(1);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_FALSE(Leave(1));
  requests.SessionEnded();
  requests.SessionOpened();
  EXPECT_THAT(Sent(), IsEmpty());
}

// Next of all: another of its region may be waiting for that.
TEST_F(AWithdrawnRequest, LeavesFirstWhenItIsTakenAfterAll) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  requests.Withdraw(1);
  requests.Withdraw(1);
  EXPECT_THAT(Sent(), IsEmpty());
  Register(kAnother);
  EXPECT_FALSE(Take(1));
  EXPECT_THAT(Sent(), ElementsAre("-1", "+2"));
}

TEST_F(AWithdrawnRequest, IsForgottenWhenItIsRefused) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  requests.Withdraw(1);
  EXPECT_FALSE(Refuse(1));
  EXPECT_THAT(Refused(), IsEmpty());
  EXPECT_FALSE(requests.NextRetry());
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(AWithdrawnRequest, IsForgottenWithTheSession) {
  for (int i = 0; i < 3; ++i) Register(kSubtree);
  requests.SessionOpened();
  Sent();
  Take(1);
  Take(2);
  requests.Withdraw(1);  // to be sent
  Sent();
  requests.Withdraw(2);  // not sent yet
  requests.Withdraw(3);  // not answered yet
  requests.SessionEnded();
  requests.SessionOpened();
  EXPECT_THAT(Sent(), IsEmpty());
}

// Or the master agent would refuse it as a duplicate.
TEST_F(AWithdrawnRequest, IsWaitedForByTheNextOfItsRegion) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  requests.Withdraw(1);
  Register(kSubtree);
  EXPECT_THAT(Sent(), IsEmpty());
  Take(1);
  EXPECT_THAT(Sent(), ElementsAre("-1", "+2"));
}

TEST_F(AWithdrawnRequest, IsNoLongerWaitedForWhenItIsRefused) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  requests.Withdraw(1);
  Register(kSubtree);
  Refuse(1);
  EXPECT_THAT(Sent(), ElementsAre("+2"));
}

TEST_F(AWithdrawnRequest, IsNotWaitedForByAnotherRegion) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  requests.Withdraw(1);
  Register(kAnother);
  Register(kSubtree, "rack");
  AddCaps(kSubtree);
  EXPECT_THAT(Sent(), ElementsAre("+2", "+3", "+4"));
}

TEST_F(WithdrawnAgentCaps, AreFoundByWhatTheyAre) {
  Register(kSubtree);
  AddCaps(kSubtree, "rack");
  AddCaps(kAnother);
  AddCaps(kSubtree);
  requests.SessionOpened();
  Sent();
  for (const std::uint32_t id : {1, 2, 3, 4}) Take(id);
  requests.WithdrawAgentCaps("1.3", "");
  EXPECT_THAT(Sent(), IsEmpty());
  requests.WithdrawAgentCaps(kSubtree, "");
  EXPECT_THAT(Sent(), ElementsAre("-4"));
  requests.WithdrawAgentCaps(kSubtree, "rack");
  EXPECT_THAT(Sent(), ElementsAre("-2"));
}

TEST_F(WithdrawnAgentCaps, GoOneByOneIfTheyAreTheSame) {
  AddCaps(kSubtree);
  AddCaps(kSubtree);
  requests.SessionOpened();
  Sent();
  Take(1);
  Take(2);
  requests.WithdrawAgentCaps(kSubtree, "");
  EXPECT_THAT(Sent(), ElementsAre("-1"));
  requests.WithdrawAgentCaps(kSubtree, "");
  EXPECT_THAT(Sent(), ElementsAre("-2"));
  requests.WithdrawAgentCaps(kSubtree, "");
  EXPECT_THAT(Sent(), IsEmpty());
}

}  // namespace
}  // namespace snmpsubagent::agentx
