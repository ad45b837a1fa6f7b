// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <numeric>

#include "SessionTest.h"

namespace snmpsubagent::agentx {
namespace {

class ANotification : public SessionTest {
 protected:
  void OpenAgain() {
    told.clear();
    Pass(options.firstRetry);
    session().Connected(now);
    Answer(Sent().at(0));
    told.clear();
  }
  // The callback that is told this stops the session.
  void StopWhenTold(const char* of) {
    whenTold = [this, of](const std::string& what) {
      if (what != of) return;
      session().Stop(now);
      told.emplace_back("stopped");
    };
  }
};
class ManyNotifications : public ANotification {};

TEST_F(ANotification, IsSentAtOnceInAnOpenSession) {
  StartOpen();
  EXPECT_EQ(Notify(7), 1U);
  const auto sent = Sent();
  EXPECT_THAT(LastOf(sent), ElementsAre(7U));
  EXPECT_THAT(Told(), IsEmpty());
  Answer(sent[0]);
  EXPECT_THAT(Told(), ElementsAre("notification 1: sent"));
}

TEST_F(ANotification, IsSentInItsContext) {
  StartOpen();
  session().Notify(NotifyPayload(1), "rack", now);
  EXPECT_EQ(Sent().at(0).context, "rack");
}

TEST_F(ANotification, IsRefusedWithTheMasterAgentsError) {
  StartOpen();
  Notify();
  Answer(Sent().at(0), Error::ProcessingError);
  EXPECT_THAT(Told(), ElementsAre("notification 1: refused, processingError"));
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(ANotification, IsRefusedWhenTheMasterAgentDoesNotKnowTheSession) {
  StartOpen();
  Notify();
  EXPECT_FALSE(Answer(Sent().at(0), Error::NotOpen));
  EXPECT_THAT(Told(),
              ElementsAre("notification 1: refused, notOpen",
                          "ended: the master agent does not know it any more"));
}

// The transport is reliable: an answer that is late does not send it again.
TEST_F(ANotification, ArrivesOnceWhenTheMasterAgentIsStoppedForFourSeconds) {
  StartOpen();
  Notify();
  const auto sent = Sent();
  EXPECT_TRUE(Pass(seconds(4)));
  EXPECT_THAT(SentTypes(), IsEmpty());
  Answer(sent.at(0));
  EXPECT_THAT(Told(), ElementsAre("notification 1: sent"));
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(ANotification, WaitsForASession) {
  for (SubIdentifier i = 1; i <= 50; ++i) Notify(i);
  EXPECT_EQ(session().WaitingNotifications(), 50U);
  StartOpen();
  std::vector<SubIdentifier> expected(50);
  std::iota(expected.begin(), expected.end(), 1U);
  EXPECT_EQ(LastOf(Sent()), expected);
  EXPECT_EQ(session().WaitingNotifications(), 0U);
}

TEST_F(ANotification, ThatIsTheOldestGoesWhenTooManyWait) {
  options.notificationLimit = 2;
  StartConnecting();
  for (SubIdentifier i = 1; i <= 4; ++i) Notify(i);
  EXPECT_THAT(Told(), ElementsAre("notification 1: dropped",
                                  "notification 2: dropped"));
  EXPECT_EQ(session().DroppedNotifications(), 2U);
  session().Connected(now);
  Answer(Sent().at(0));
  EXPECT_THAT(LastOf(Sent()), ElementsAre(3U, 4U));
}

TEST_F(ANotification, IsDroppedAtOnceWhenNoneMayWait) {
  options.notificationLimit = 0;
  EXPECT_EQ(Notify(), 1U);
  EXPECT_THAT(Told(), ElementsAre("notification 1: dropped"));
}

TEST_F(ANotification, ThatWasSentIsUnansweredWhenTheSessionIsLost) {
  StartOpen();
  Notify();
  Sent();
  session().Disconnected(now, "gone");
  EXPECT_THAT(Told(), ElementsAre("ended: gone", "notification 1: unanswered"));
  OpenAgain();
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(ANotification, ThatWasNotBegunIsSentInTheNextSession) {
  StartOpen();
  for (SubIdentifier i = 1; i <= 3; ++i) Notify(i);
  Output& output = session().Output();
  const std::size_t size = output.size() / 3;
  output.Sent(size + 1);  // the first, and an octet of the second
  session().Disconnected(now, "gone");
  EXPECT_THAT(Told(), ElementsAre("ended: gone", "notification 1: unanswered",
                                  "notification 2: unanswered"));
  Notify(4);
  OpenAgain();
  EXPECT_THAT(LastOf(Sent()), ElementsAre(3U, 4U));
}

TEST_F(ANotification, IsSentInTheNextSessionWhenNothingWasTaken) {
  options.responseTimeout = seconds(2);
  StartOpen();
  Notify(1);
  EXPECT_FALSE(Pass(seconds(2)));
  OpenAgain();
  EXPECT_THAT(LastOf(Sent()), ElementsAre(1U));
}

TEST_F(ANotification, HasItsOutcomeWhenTheSessionIsStopped) {
  StartOpen();
  for (SubIdentifier i = 1; i <= OwnRequests::kMost + 2; ++i) Notify(i);
  session().Stop(now);
  ASSERT_EQ(told.size(), 1 + OwnRequests::kMost + 2);
  EXPECT_EQ(told.at(0), "ended: it was stopped");
  EXPECT_EQ(told.at(1), "notification 1: unanswered");
  EXPECT_EQ(told.at(64), "notification 64: unanswered");
  EXPECT_EQ(told.at(65), "notification 65: dropped");
  EXPECT_EQ(told.at(66), "notification 66: dropped");
  const auto types = SentTypes();
  EXPECT_EQ(types.size(), OwnRequests::kMost + 1);
  EXPECT_EQ(types.back(), "Close");
}

TEST_F(ANotification, IsDroppedWhenItWaitsAndTheSessionIsStopped) {
  Notify();
  session().Stop(now);
  EXPECT_THAT(Told(), ElementsAre("notification 1: dropped"));
}

TEST_F(ANotification, HasItsOutcomeBeforeAStopInACallbackReturns) {
  StartOpen();
  Notify();
  Notify();
  Sent();
  Notify();
  StopWhenTold("ended: gone");
  session().Disconnected(now, "gone");
  EXPECT_THAT(Told(), ElementsAre("ended: gone", "notification 1: unanswered",
                                  "notification 2: unanswered",
                                  "notification 3: dropped", "stopped"));
}

TEST_F(ANotification, HasItsOutcomeWhenThatOfAnotherStopsTheSession) {
  StartOpen();
  Notify();
  Notify();
  Sent();
  StopWhenTold("notification 1: unanswered");
  session().Disconnected(now, "gone");
  EXPECT_THAT(Told(), ElementsAre("ended: gone", "notification 1: unanswered",
                                  "notification 2: unanswered", "stopped"));
}

TEST_F(ANotification, MayBeQueuedInTheCallbackThatTellsOfAnother) {
  options.notificationLimit = 1;
  whenTold = [&](const std::string& what) {
    if (what == "notification 1: dropped") Notify(3);
  };
  StartConnecting();
  Notify(1);
  Notify(2);
  EXPECT_THAT(Told(), ElementsAre("notification 1: dropped"));
  session().Connected(now);
  Answer(Sent().at(0));
  EXPECT_THAT(LastOf(Sent()), ElementsAre(2U, 3U));
}

TEST_F(ANotification, MayBeQueuedAgainWheneverItIsDropped) {
  options.notificationLimit = 0;
  whenTold = [&](const std::string& what) {
    if (what.find("dropped") != std::string::npos) Notify(1);
  };
  StartConnecting();
  Notify(1);
  EXPECT_THAT(Told(), ElementsAre("notification 1: dropped"));
  EXPECT_EQ(session().WaitingNotifications(), 1U);
  session().ConnectFailed(now, "refused");
  EXPECT_THAT(Told(), ElementsAre("attempt failed: refused",
                                  "notification 2: dropped"));
  EXPECT_EQ(session().WaitingNotifications(), 1U);
  OpenAgain();
  EXPECT_THAT(LastOf(Sent()), ElementsAre(1U));
}

// Of a burst the output never has more than a few, so that neither side waits
// for the other; and what the application has queued is not dropped.
TEST_F(ManyNotifications, AllArriveInAnOpenSession) {
  constexpr SubIdentifier kBurst = 100'000;
  StartOpen();
  for (SubIdentifier i = 1; i <= kBurst; ++i) Notify(i);
  EXPECT_EQ(session().WaitingNotifications(), kBurst - OwnRequests::kMost);
  SubIdentifier arrived = 0;
  for (auto sent = Sent(); !sent.empty(); sent = Sent()) {
    ASSERT_LE(sent.size(), OwnRequests::kMost);
    for (const reference::Pdu& pdu : sent) {
      ASSERT_EQ(LastOf({pdu}).at(0), ++arrived);
      ASSERT_TRUE(Answer(pdu));
    }
  }
  EXPECT_EQ(arrived, kBurst);
  EXPECT_EQ(told.size(), kBurst);
  EXPECT_EQ(told.back(), "notification 100000: sent");
}

TEST_F(ManyNotifications, AreLimitedOnceTheSessionIsLost) {
  options.notificationLimit = 10;
  StartOpen();
  for (SubIdentifier i = 1; i <= 100; ++i) Notify(i);
  Sent();
  session().Disconnected(now, "gone");
  EXPECT_EQ(session().WaitingNotifications(), 10U);
  EXPECT_EQ(session().DroppedNotifications(), 26U);
  EXPECT_EQ(told.size(), 1 + 64 + 26U);
  OpenAgain();
  EXPECT_EQ(LastOf(Sent()).front(), 91U);
}

TEST_F(ManyNotifications, DoNotKeepRequestsFromBeingAnswered) {
  StartOpen();
  for (SubIdentifier i = 1; i <= 1000; ++i) Notify(i);
  Sent();
  Receive(reference::Get{});
  EXPECT_THAT(SentTypes(), ElementsAre("Response"));
}

TEST_F(ManyNotifications, DoNotKeepARegistrationBehindThem) {
  StartOpen();
  for (SubIdentifier i = 1; i <= 1000; ++i) Notify(i);
  Register("1.3.6.1.4.1.32473.1");
  const auto sent = Sent();
  Answer(sent.at(0));
  EXPECT_THAT(SentTypes(), ElementsAre("Register"));
}

}  // namespace
}  // namespace snmpsubagent::agentx
