// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "StandingRequestsTest.h"

namespace snmpsubagent::agentx {
namespace {

class AStandingRequest : public StandingRequestsTest {};
class ARefusedRequest : public StandingRequestsTest {};

TEST_F(AStandingRequest, HasANumberThatNoOtherEverHas) {
  EXPECT_EQ(Register(kSubtree), 1U);
  EXPECT_EQ(AddCaps(kSubtree), 2U);
  requests.Withdraw(2);
  EXPECT_EQ(Register(kSubtree), 3U);
}

TEST_F(AStandingRequest, IsNotSentWithoutASession) {
  Register(kSubtree);
  EXPECT_FALSE(requests.Next());
  requests.SessionOpened();
  requests.SessionEnded();
  Register(kAnother);
  EXPECT_FALSE(requests.Next());
}

TEST_F(AStandingRequest, IsSentInTheOrderOfItsNumber) {
  Register(kAnother);
  AddCaps(kSubtree);
  requests.SessionOpened();
  Register(kSubtree);
  EXPECT_THAT(Sent(), ElementsAre("+1", "+2", "+3"));
}

TEST_F(AStandingRequest, IsNextUntilItIsWritten) {
  Register(kSubtree, "rack");
  requests.SessionOpened();
  for (int time = 0; time < 2; ++time) {
    const auto next = requests.Next();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->id, 1U);
    EXPECT_FALSE(next->withdraws);
    EXPECT_EQ(std::get<Registration>(*next->content).subtree, Oid(kSubtree));
    EXPECT_EQ(std::get<Registration>(*next->content).context, "rack");
  }
  requests.NextIsWritten();
  EXPECT_FALSE(requests.Next());
}

TEST_F(AStandingRequest, IsSentOnceInEachSession) {
  Register(kSubtree);
  AddCaps(kSubtree);
  for (int session = 0; session < 3; ++session) {
    requests.SessionOpened();
    EXPECT_THAT(Sent(), ElementsAre("+1", "+2")) << session;
    Take(1);
    Pass(std::chrono::hours(1));
    EXPECT_THAT(Sent(), IsEmpty()) << session;
    requests.SessionEnded();
  }
}

TEST_F(AStandingRequest, IsTakenFromItsResponseToTheEndOfTheSession) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  EXPECT_FALSE(requests.IsTaken(1));
  EXPECT_TRUE(Take(1));
  EXPECT_TRUE(requests.IsTaken(1));
  EXPECT_FALSE(requests.IsTaken(2));
  requests.SessionEnded();
  EXPECT_FALSE(requests.IsTaken(1));
}

TEST_F(AStandingRequest, IsToldOfWithWhatWasAskedFor) {
  AddCaps(kSubtree, "rack");
  requests.SessionOpened();
  Sent();
  const auto* const content = requests.Answered(1, false, Error::None, now);
  ASSERT_TRUE(content);
  EXPECT_EQ(std::get<AgentCaps>(*content).id, Oid(kSubtree));
  EXPECT_EQ(std::get<AgentCaps>(*content).context, "rack");
}

TEST_F(AStandingRequest, ThatThereIsNotHasNoResponse) {
  requests.SessionOpened();
  EXPECT_FALSE(Take(7));
  EXPECT_FALSE(Refuse(7));
  EXPECT_FALSE(Leave(7));
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(ARefusedRequest, IsSentAgainAfterATimeThatGrowsToABound) {
  Register(kSubtree);
  requests.SessionOpened();
  for (const int wait : {1000, 2000, 3000, 3000}) {
    EXPECT_THAT(Sent(), ElementsAre("+1")) << wait;
    EXPECT_TRUE(Refuse(1));
    EXPECT_EQ(requests.NextRetry(), now + milliseconds(wait));
    Pass(milliseconds(wait - 1));
    EXPECT_THAT(Sent(), IsEmpty()) << wait;
    Pass(milliseconds(1));
    EXPECT_FALSE(requests.NextRetry());
  }
}

TEST_F(ARefusedRequest, WaitsAShortTimeAgainInTheNextSession) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  Refuse(1);
  Pass(seconds(1));
  Sent();
  Refuse(1);
  requests.SessionEnded();
  EXPECT_FALSE(requests.NextRetry());
  requests.SessionOpened();
  EXPECT_THAT(Sent(), ElementsAre("+1"));
  Refuse(1);
  EXPECT_EQ(requests.NextRetry(), now + seconds(1));
}

TEST_F(ARefusedRequest, WaitsByItself) {
  Register(kSubtree);
  Register(kAnother);
  requests.SessionOpened();
  Sent();
  Refuse(1);
  Pass(milliseconds(400));
  Refuse(2);
  EXPECT_EQ(requests.NextRetry(), now + milliseconds(600));
  Pass(milliseconds(600));
  EXPECT_THAT(Sent(), ElementsAre("+1"));
  EXPECT_EQ(requests.NextRetry(), now + milliseconds(400));
  Pass(milliseconds(400));
  EXPECT_THAT(Sent(), ElementsAre("+2"));
}

// The same octets would be no better understood another time.
TEST_F(ARefusedRequest, IsNotSentAgainInTheSessionAfterAParseError) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  EXPECT_TRUE(Refuse(1, Error::ParseError));
  EXPECT_FALSE(requests.NextRetry());
  Pass(std::chrono::hours(1));
  EXPECT_THAT(Sent(), IsEmpty());
  requests.SessionEnded();
  requests.SessionOpened();
  EXPECT_THAT(Sent(), ElementsAre("+1"));
}

TEST_F(ARefusedRequest, IsListedWithItsReasonUntilItIsTaken) {
  Register(kAnother);
  Register(kSubtree, "rack");
  requests.SessionOpened();
  Sent();
  Take(1);
  Refuse(2, Error::UnsupportedContext);
  const auto refused = requests.FindRefused(2);
  ASSERT_TRUE(refused);
  EXPECT_EQ(refused->id, 2U);
  EXPECT_EQ(refused->subtree, Oid(kSubtree));
  EXPECT_EQ(refused->context, "rack");
  EXPECT_EQ(refused->error, Error::UnsupportedContext);
  EXPECT_FALSE(requests.FindRefused(1));
  EXPECT_FALSE(requests.FindRefused(3));
  Pass(seconds(1));
  Sent();
  EXPECT_THAT(Refused(), ElementsAre(2));
  Take(2);
  EXPECT_THAT(Refused(), IsEmpty());
}

TEST_F(ARefusedRequest, IsNotListedWithoutASession) {
  Register(kSubtree);
  requests.SessionOpened();
  Sent();
  Refuse(1);
  requests.SessionEnded();
  EXPECT_THAT(Refused(), IsEmpty());
}

TEST_F(ARefusedRequest, IsNotListedIfItIsOneForAgentCaps) {
  AddCaps(kSubtree);
  requests.SessionOpened();
  Sent();
  EXPECT_TRUE(Refuse(1));
  EXPECT_THAT(Refused(), IsEmpty());
  Pass(seconds(1));
  EXPECT_THAT(Sent(), ElementsAre("+1"));
}

TEST_F(ARefusedRequest, IsSentAtOnceWhenAnotherOfItsRegionHasLeft) {
  Register(kSubtree);
  Register(kSubtree);
  Register(kAnother);
  Register(kSubtree, "rack");
  requests.SessionOpened();
  Sent();
  Take(1);
  for (const std::uint32_t id : {2, 3, 4}) Refuse(id);
  requests.Withdraw(1);
  EXPECT_THAT(Sent(), ElementsAre("-1"));
  Leave(1);
  EXPECT_THAT(Sent(), ElementsAre("+2"));
  Take(2);
  Pass(seconds(1));
  EXPECT_THAT(Sent(), ElementsAre("+3", "+4"));
}

}  // namespace
}  // namespace snmpsubagent::agentx
