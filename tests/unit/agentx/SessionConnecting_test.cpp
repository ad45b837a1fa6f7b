// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SessionTest.h"

namespace snmpsubagent::agentx {
namespace {

class AStoppedSession : public SessionTest {};
class AConnectingSession : public SessionTest {};
class AnOpeningSession : public SessionTest {};
class AnOpenSession : public SessionTest {};
class ALostSession : public SessionTest {};
class AnIdleSession : public SessionTest {};

TEST_F(AStoppedSession, WantsNoConnectionAndSendsNothing) {
  Register("1.3.6.1.4.1.32473.1");
  Notify();
  EXPECT_FALSE(session().WantsConnection());
  EXPECT_FALSE(session().IsOpen());
  EXPECT_FALSE(session().NextDeadline());
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AStoppedSession, DoesNotMindADriverThatIsLate) {
  session().Connected(now);
  session().ConnectFailed(now, "late");
  session().Disconnected(now, "late");
  EXPECT_FALSE(Receive(reference::Ping{}));
  EXPECT_TRUE(session().Advance(now));
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AConnectingSession, WantsAConnectionAtOnce) {
  StartConnecting();
  EXPECT_TRUE(session().WantsConnection());
  EXPECT_FALSE(session().NextDeadline());
}

TEST_F(AConnectingSession, TriesAgainAfterATimeThatGrows) {
  options.firstRetry = milliseconds(100);
  options.lastRetry = milliseconds(350);
  StartConnecting();
  for (const int wait : {100, 200, 350, 350}) {
    session().ConnectFailed(now, "nobody listens");
    EXPECT_THAT(Told(), ElementsAre("attempt failed: nobody listens"));
    EXPECT_FALSE(session().WantsConnection());
    Pass(milliseconds(wait - 1));
    EXPECT_FALSE(session().WantsConnection()) << wait;
    Pass(milliseconds(1));
    EXPECT_TRUE(session().WantsConnection()) << wait;
  }
}

TEST_F(AConnectingSession, TriesAtOnceWhenItIsStartedAnew) {
  StartConnecting();
  session().ConnectFailed(now, "nobody listens");
  session().Stop(now);
  EXPECT_FALSE(session().NextDeadline());
  session().Start(now);
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AnOpeningSession, SendsOpenWithWhatItIs) {
  options.id = "1.3.6.1.4.1.32473.7";
  options.description = "thermometer";
  options.timeout = seconds(9);
  StartOpening();
  EXPECT_FALSE(session().WantsConnection());
  EXPECT_FALSE(session().IsOpen());
  const auto open = SentOnly<reference::Open>();
  EXPECT_EQ(open.id, (reference::Oid{1, 3, 6, 1, 4, 1, 32473, 7}));
  EXPECT_EQ(open.description, "thermometer");
  EXPECT_EQ(open.timeout, 9);
}

TEST_F(AnOpeningSession, IsOpenWithTheResponse) {
  StartOpening();
  Answer(Sent().at(0));
  EXPECT_THAT(Told(), ElementsAre("opened"));
  EXPECT_TRUE(session().IsOpen());
}

TEST_F(AnOpeningSession, FailsWhenItIsRefused) {
  StartOpening();
  EXPECT_FALSE(Answer(Sent().at(0), Error::OpenFailed));
  EXPECT_THAT(
      Told(),
      ElementsAre("attempt failed: the master agent refused it: openFailed"));
  Pass(options.firstRetry);
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AnOpeningSession, FailsWhenNothingAnswers) {
  options.responseTimeout = milliseconds(2500);
  StartOpening();
  EXPECT_TRUE(Pass(milliseconds(2499)));
  EXPECT_FALSE(Pass(milliseconds(1)));
  EXPECT_THAT(Told(), ElementsAre("attempt failed: the master agent has not "
                                  "answered for 2.500 s"));
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AnOpeningSession, SendsNothingElse) {
  StartOpening();
  Register("1.3.6.1.4.1.32473.1");
  Notify();
  EXPECT_THAT(SentTypes(), ElementsAre("Open"));
}

TEST_F(AnOpeningSession, KnowsNoSessionYet) {
  StartOpening();
  Sent();
  Receive(reference::Get{}, 0);
  EXPECT_EQ(SentOnly<reference::Response>().error,
            static_cast<int>(Error::NotOpen));
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(AnOpeningSession, SaysNothingWhenItIsStopped) {
  StartOpening();
  session().Stop(now);
  EXPECT_TRUE(session().Output().empty());
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(AnOpenSession, IsLostWithItsConnection) {
  StartOpen();
  session().Disconnected(now, "the connection was reset");
  EXPECT_THAT(Told(), ElementsAre("ended: the connection was reset"));
  EXPECT_FALSE(session().IsOpen());
  Pass(options.firstRetry);
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AnOpenSession, IsClosedByTheMasterAgentForAReason) {
  StartOpen();
  EXPECT_FALSE(Receive(reference::Close{5}));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent closed it: "
                                  "reasonShutdown"));
  EXPECT_TRUE(session().Output().empty());
  Pass(options.firstRetry);
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AnOpenSession, SaysWhyItGoesWhenItIsStopped) {
  StartOpen();
  session().Stop(now);
  EXPECT_THAT(Told(), ElementsAre("ended: it was stopped"));
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].header.sessionId, kSessionId);
  EXPECT_EQ(std::get<reference::Close>(sent[0].body).reason, 5);
  EXPECT_FALSE(session().NextDeadline());
  EXPECT_FALSE(Receive(reference::Get{}));
}

TEST_F(AnOpenSession, CanBeStoppedTwice) {
  StartOpen();
  session().Stop(now);
  Sent();
  Told();
  session().Stop(now);
  EXPECT_TRUE(session().Output().empty());
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(AnOpenSession, IsStoppedAndStartedInACallback) {
  whenTold = [&](const std::string& what) {
    if (what != "opened") return;
    session().Stop(now);
    session().Start(now);
  };
  StartOpening();
  EXPECT_FALSE(Answer(Sent().at(0)));
  EXPECT_THAT(Told(), ElementsAre("opened", "ended: it was stopped"));
  EXPECT_THAT(SentTypes(), ElementsAre("Close"));
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AnOpenSession, IsLostWhenTheMasterAgentKnowsItNoMore) {
  StartOpen();
  Register("1.3.6.1.4.1.32473.1");
  EXPECT_FALSE(Answer(Sent().at(0), Error::NotOpen));
  EXPECT_THAT(Told(),
              ElementsAre("ended: the master agent does not know it any more"));
}

TEST_F(AnOpenSession, IsLostWhenARequestOfItsIsNotAnswered) {
  StartOpen();
  Register("1.3.6.1.4.1.32473.1");
  Sent();
  EXPECT_TRUE(Pass(milliseconds(9999)));
  EXPECT_FALSE(Pass(milliseconds(1)));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent has not answered "
                                  "for 10 s"));
}

// A function that is told, and takes its time, is no fault of the master
// agent's: responses are awaited from when the requests have been sent.
TEST_F(AnOpenSession, AwaitsResponsesSinceItsRequestsWereSent) {
  Register("1.3.6.1.4.1.32473.1");
  StartOpen();
  EXPECT_TRUE(session().HasNewRequests());
  now += options.responseTimeout + seconds(1);
  session().Sent(now);
  EXPECT_FALSE(session().HasNewRequests());
  now += options.responseTimeout - milliseconds(1);
  session().Sent(now);
  EXPECT_TRUE(session().Advance(now));
  now += milliseconds(1);
  EXPECT_FALSE(session().Advance(now));
}

// Whatever comes and goes meanwhile.
TEST_F(AnOpenSession, IsLostWhenOneRequestOfManyIsNotAnswered) {
  StartOpen();
  Register("1.3.6.1.4.1.32473.1");
  Sent();
  for (int second = 0; second < 9; ++second) {
    Pass(seconds(1));
    Register("1.3.6.1.4.1.32473.2");
    Answer(Sent().at(0));
  }
  Told();
  EXPECT_FALSE(Pass(seconds(1)));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent has not answered "
                                  "for 10 s"));
}

TEST_F(ALostSession, IsOpenedAgainWithAnotherSessionId) {
  StartOpen();
  session().Disconnected(now, "gone");
  Told();
  Pass(options.firstRetry);
  session().Connected(now);
  auto open = Sent().at(0);
  open.header.flags = kNetworkByteOrder;
  open.header.sessionId = 78;
  open.body = reference::Response{};
  Receive(reference::Encode(open));
  EXPECT_THAT(Told(), ElementsAre("opened"));
  Receive(reference::Get{}, 77);
  EXPECT_EQ(SentOnly<reference::Response>().error,
            static_cast<int>(Error::NotOpen));
  Receive(reference::Get{}, 78);
  EXPECT_EQ(SentOnly<reference::Response>().error, 0);
}

// Half a message, and what was not sent yet.
TEST_F(ALostSession, LeavesNothingToTheNextConnection) {
  StartOpen();
  Receive(reference::Get{});
  Bytes half = reference::Encode({{}, {}, reference::Get{}});
  half.resize(kHeaderSize / 2);
  Receive(half);
  session().Disconnected(now, "gone");
  Pass(options.firstRetry);
  session().Connected(now);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_TRUE(Answer(sent[0]));
  EXPECT_TRUE(session().IsOpen());
}

// A master agent that accepts sessions and closes them is not hammered.
TEST_F(ALostSession, WaitsLongerEachTimeWhenItNeverWorked) {
  StartConnecting();
  for (const int wait : {100, 200, 400, 800}) {
    session().Connected(now);
    Answer(Sent().at(0));
    session().Disconnected(now, "gone");
    Pass(milliseconds(wait - 1));
    EXPECT_FALSE(session().WantsConnection()) << wait;
    Pass(milliseconds(1));
    EXPECT_TRUE(session().WantsConnection()) << wait;
  }
}

TEST_F(ALostSession, IsBackSoonWhenItHasWorked) {
  Register("1.3.6.1.4.1.32473.1");
  StartConnecting();
  for (int round = 0; round < 4; ++round) {
    session().Connected(now);
    AnswerAll();
    session().Disconnected(now, "gone");
    Pass(milliseconds(100));
    EXPECT_TRUE(session().WantsConnection()) << round;
  }
}

TEST_F(AnIdleSession, IsPingedSoOften) {
  options.pingInterval = seconds(15);
  StartOpen();
  for (int round = 0; round < 3; ++round) {
    Pass(milliseconds(14999));
    EXPECT_THAT(SentTypes(), IsEmpty());
    Pass(milliseconds(1));
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_TRUE(std::holds_alternative<reference::Ping>(sent[0].body));
    Answer(sent[0]);
  }
}

TEST_F(AnIdleSession, IsLostWhenThePingIsNotAnswered) {
  StartOpen();
  EXPECT_TRUE(Pass(options.pingInterval));
  EXPECT_FALSE(Pass(options.responseTimeout));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent has not answered "
                                  "for 10 s"));
}

TEST_F(AnIdleSession, IsNotPingedWhileTheMasterAgentIsHeard) {
  StartOpen();
  for (int round = 0; round < 30; ++round) {
    Pass(seconds(1));
    Receive(reference::CleanupSet{});
  }
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(AnIdleSession, IsNotPingedUnlessItIsWanted) {
  options.pingInterval = milliseconds(0);
  StartOpen();
  EXPECT_FALSE(session().NextDeadline());
  EXPECT_TRUE(Pass(std::chrono::hours(24)));
}

TEST_F(AnOpenSession, KnowsTheMasterAgentsSysUpTime) {
  EXPECT_EQ(session().SysUpTime(now), 0U);
  StartOpening();
  Answer(Sent().at(0), Error::None, 4711);
  EXPECT_EQ(session().SysUpTime(now), 4711U);
  EXPECT_EQ(session().SysUpTime(now + milliseconds(1239)), 4711U + 123);
  Register("1.3.6.1.4.1.32473.1");
  Answer(Sent().at(0), Error::None, 5000);
  EXPECT_EQ(session().SysUpTime(now), 5000U);
}

TEST_F(AnOpenSession, KnowsASysUpTimeThatWraps) {
  StartOpening();
  Answer(Sent().at(0), Error::None, 0xffffffff);
  EXPECT_EQ(session().SysUpTime(now + milliseconds(10)), 0U);
}

TEST_F(AnOpenSession, KnowsNoSysUpTimeBeforeTheMasterAgentHasStarted) {
  StartOpening();
  Answer(Sent().at(0), Error::None, 100);
  EXPECT_EQ(session().SysUpTime(now - milliseconds(1000)), 0U);
  EXPECT_EQ(session().SysUpTime(now - milliseconds(1010)), 0U);
  EXPECT_EQ(session().SysUpTime(now - std::chrono::hours(1)), 0U);
}

TEST_F(AnOpenSession, KnowsTheSysUpTimeBeforeItHasWrapped) {
  StartOpening();
  Answer(Sent().at(0), Error::None, 0xffffffff);
  Pass(milliseconds(1000));
  Register("1.3.6.1.4.1.32473.1");
  Answer(Sent().at(0), Error::None, 99);
  EXPECT_EQ(session().SysUpTime(now - milliseconds(1010)), 0xfffffffe);
}

// That of another context is another clock; that of an error tells nothing.
TEST_F(AnOpenSession, HasSysUpTimeOfTheDefaultContextAndWithoutError) {
  StartOpening();
  Answer(Sent().at(0), Error::None, 4711);
  session().Register({"1.3.6.1.4.1.32473.1", "rack", 127, seconds(0)}, now);
  Answer(Sent().at(0), Error::None, 1);
  EXPECT_EQ(session().SysUpTime(now), 4711U);
  Register("1.3.6.1.4.1.32473.2");
  Answer(Sent().at(0), Error::RequestDenied, 1);
  EXPECT_EQ(session().SysUpTime(now), 4711U);
}

}  // namespace
}  // namespace snmpsubagent::agentx
