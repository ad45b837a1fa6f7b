// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <set>

#include "SessionTest.h"

namespace snmpsubagent::agentx {
namespace {

constexpr const char* kSubtree = "1.3.6.1.4.1.32473.1";
constexpr const char* kAnother = "1.3.6.1.4.1.32473.2";

class ARegistration : public SessionTest {};
class ARefusedRegistration : public SessionTest {};
class AWithdrawnRegistration : public SessionTest {};
class ManyRegistrations : public SessionTest {};
class AgentCapabilities : public SessionTest {};

TEST_F(ARegistration, IsSentWithWhatItSays) {
  StartOpen();
  session().Register({kSubtree, "rack", 5, seconds(8)}, now);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].header.sessionId, kSessionId);
  EXPECT_EQ(sent[0].context, "rack");
  const auto& body = std::get<reference::Register>(sent[0].body);
  EXPECT_EQ(body.subtree, ToReference(Oid(kSubtree)));
  EXPECT_EQ(body.priority, 5);
  EXPECT_EQ(body.timeout, 8);
}

TEST_F(ARegistration, IsTakenWithTheResponse) {
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  EXPECT_FALSE(session().IsRegistered(id));
  Answer(Sent().at(0));
  EXPECT_TRUE(session().IsRegistered(id));
  EXPECT_THAT(Told(), ElementsAre("registration 1: noError"));
  EXPECT_FALSE(session().IsRegistered(id + 1));
}

TEST_F(ARegistration, IsSentWithEachSession) {
  Register(kSubtree);
  Register(kAnother);
  StartOpen();
  EXPECT_THAT(SentTypes(), ElementsAre("Register", "Register"));
  session().Disconnected(now, "gone");
  Pass(options.firstRetry);
  session().Connected(now);
  Answer(Sent().at(0));
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(std::get<reference::Register>(sent[0].body).subtree,
            ToReference(Oid(kSubtree)));
  EXPECT_EQ(std::get<reference::Register>(sent[1].body).subtree,
            ToReference(Oid(kAnother)));
}

TEST_F(ARegistration, IsNotTakenWithoutASession) {
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  AnswerAll();
  session().Disconnected(now, "gone");
  EXPECT_FALSE(session().IsRegistered(id));
}

TEST_F(ARegistration, MayBeWithdrawnInTheCallbackThatTellsOfIt) {
  StartOpen();
  whenTold = [&](const std::string&) { session().Unregister(1, now); };
  Register(kSubtree);
  Answer(Sent().at(0));
  EXPECT_THAT(SentTypes(), ElementsAre("Unregister"));
}

TEST_F(ARefusedRegistration, IsTriedAgainAfterATimeThatGrows) {
  options.firstRegistrationRetry = seconds(1);
  options.lastRegistrationRetry = seconds(3);
  options.pingInterval = seconds(0);
  StartOpen();
  Register(kSubtree);
  for (const int wait : {1000, 2000, 3000, 3000}) {
    Answer(Sent().at(0), Error::DuplicateRegistration);
    EXPECT_THAT(Told(), ElementsAre("registration 1: duplicateRegistration"));
    Pass(milliseconds(wait - 1));
    EXPECT_THAT(SentTypes(), IsEmpty()) << wait;
    Pass(milliseconds(1));
  }
  Answer(Sent().at(0));
  EXPECT_THAT(Told(), ElementsAre("registration 1: noError"));
  EXPECT_FALSE(session().NextDeadline());
}

TEST_F(ARefusedRegistration, IsListedUntilItIsTaken) {
  StartOpen();
  session().Register({kSubtree, "rack", 127, seconds(0)}, now);
  Register(kAnother);
  const auto sent = Sent();
  Answer(sent.at(0), Error::UnsupportedContext);
  Answer(sent.at(1));
  const auto refused = session().RefusedRegistrations();
  ASSERT_EQ(refused.size(), 1U);
  EXPECT_EQ(refused[0].id, 1U);
  EXPECT_EQ(refused[0].subtree, Oid(kSubtree));
  EXPECT_EQ(refused[0].context, "rack");
  EXPECT_EQ(refused[0].error, Error::UnsupportedContext);
  Pass(options.firstRegistrationRetry);
  EXPECT_EQ(session().RefusedRegistrations().size(), 1U);
  Answer(Sent().at(0));
  EXPECT_THAT(session().RefusedRegistrations(), IsEmpty());
}

TEST_F(ARefusedRegistration, IsAskedForAtOnceInTheNextSession) {
  StartOpen();
  Register(kSubtree);
  Answer(Sent().at(0), Error::RequestDenied);
  session().Disconnected(now, "gone");
  EXPECT_THAT(session().RefusedRegistrations(), IsEmpty());
  Pass(options.firstRetry);
  session().Connected(now);
  Answer(Sent().at(0));
  EXPECT_THAT(SentTypes(), ElementsAre("Register"));
}

// The same bytes would be no better understood another time.
TEST_F(ARefusedRegistration, IsNotTriedAgainAfterAParseError) {
  options.pingInterval = seconds(0);
  StartOpen();
  Register(kSubtree);
  Answer(Sent().at(0), Error::ParseError);
  EXPECT_FALSE(session().NextDeadline());
  EXPECT_EQ(session().RefusedRegistrations().size(), 1U);
}

TEST_F(ARefusedRegistration, IsTriedAgainAfterAnyOtherError) {
  for (const Error error :
       {Error::GenErr, Error::UnsupportedContext, Error::DuplicateRegistration,
        Error::RequestDenied, Error::ProcessingError, Error::OpenFailed}) {
    told.clear();
    session().Stop(now);
    told.clear();
    StartOpen();
    const std::uint32_t id = Register(kSubtree);
    Answer(Sent().back(), error);
    Pass(options.firstRegistrationRetry);
    EXPECT_THAT(SentTypes(), ElementsAre("Register")) << ToString(error);
    session().Unregister(id, now);
  }
}

TEST_F(ARefusedRegistration, IsForgottenWhenItIsWithdrawn) {
  options.pingInterval = seconds(0);
  StartOpen();
  Register(kSubtree);
  Answer(Sent().at(0), Error::DuplicateRegistration);
  session().Unregister(1, now);
  EXPECT_THAT(session().RefusedRegistrations(), IsEmpty());
  Pass(seconds(100));
  EXPECT_THAT(SentTypes(), IsEmpty());
  EXPECT_FALSE(session().NextDeadline());
}

// Not after its time: the region is known to be free.
TEST_F(ARefusedRegistration, IsTriedAgainWhenAnotherOfItsRegionIsWithdrawn) {
  StartOpen();
  const std::uint32_t first = Register(kSubtree);
  Register(kSubtree);
  const auto sent = Sent();
  Answer(sent.at(0));
  Answer(sent.at(1), Error::DuplicateRegistration);
  session().Unregister(first, now);
  Told();
  const auto withdrawal = Sent();
  ASSERT_EQ(withdrawal.size(), 1U);
  Answer(withdrawal[0]);
  Answer(Sent().at(0));
  EXPECT_THAT(Told(), ElementsAre("registration 2: noError"));
}

TEST_F(AWithdrawnRegistration, IsWithdrawnFromTheMasterAgent) {
  StartOpen();
  const std::uint32_t id =
      session().Register({kSubtree, "rack", 5, seconds(8)}, now);
  Answer(Sent().at(0));
  session().Unregister(id, now);
  EXPECT_FALSE(session().IsRegistered(id));
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].context, "rack");
  const auto& body = std::get<reference::Unregister>(sent[0].body);
  EXPECT_EQ(body.subtree, ToReference(Oid(kSubtree)));
  EXPECT_EQ(body.priority, 5);
  Told();
  Answer(sent[0], Error::UnknownRegistration);
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AWithdrawnRegistration, IsNotSentIfItWasNot) {
  const std::uint32_t id = Register(kSubtree);
  session().Unregister(id, now);
  StartOpen();
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(AWithdrawnRegistration, IsNotSentAgainInTheNextSession) {
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  AnswerAll();
  session().Unregister(id, now);
  session().Disconnected(now, "gone");
  Pass(options.firstRetry);
  session().Connected(now);
  Answer(Sent().at(0));
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(AWithdrawnRegistration, LeavesWhenItsResponseHasCome) {
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  session().Unregister(id, now);
  session().Unregister(id, now);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  Answer(sent[0]);
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_THAT(SentTypes(), ElementsAre("Unregister"));
}

TEST_F(AWithdrawnRegistration, IsForgottenWhenItIsRefused) {
  options.pingInterval = seconds(0);
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  session().Unregister(id, now);
  Answer(Sent().at(0), Error::DuplicateRegistration);
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_THAT(SentTypes(), IsEmpty());
  EXPECT_FALSE(session().NextDeadline());
}

// Or the new one would be refused as a duplicate of the old one.
TEST_F(AWithdrawnRegistration, LeavesBeforeTheNextOfItsRegionComes) {
  StartOpen();
  session().Unregister(Register(kSubtree), now);
  Register(kSubtree);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  Answer(sent[0]);
  EXPECT_THAT(SentTypes(), ElementsAre("Unregister", "Register"));
}

TEST_F(AWithdrawnRegistration, LeavesBeforeTheNextOfItsRegionWhenItWasTaken) {
  StartOpen();
  const std::uint32_t id = Register(kSubtree);
  AnswerAll();
  session().Unregister(id, now);
  Register(kSubtree);
  EXPECT_THAT(SentTypes(), ElementsAre("Unregister", "Register"));
}

TEST_F(AWithdrawnRegistration, MayBeAnyNumber) {
  StartOpen();
  session().Unregister(0, now);
  session().Unregister(4711, now);
  EXPECT_THAT(SentTypes(), IsEmpty());
}

// The master agent answers managers between the few that it has before it.
TEST_F(ManyRegistrations, AreSentAFewAtATime) {
  for (SubIdentifier i = 1; i <= 5000; ++i) {
    session().Register({Oid(kSubtree) + Oid{i}, "", 127, seconds(0)}, now);
  }
  StartOpen();
  std::set<reference::Oid> registered;
  std::size_t most = 0;
  std::vector<reference::Pdu> unanswered = Sent();
  while (!unanswered.empty()) {
    most = std::max(most, unanswered.size());
    const reference::Pdu next = unanswered.front();
    unanswered.erase(unanswered.begin());
    registered.insert(std::get<reference::Register>(next.body).subtree);
    ASSERT_TRUE(Answer(next));
    for (auto& more : Sent()) unanswered.push_back(more);
  }
  EXPECT_EQ(registered.size(), 5000U);
  EXPECT_EQ(most, OwnRequests::kMost);
  EXPECT_TRUE(session().IsRegistered(5000));
}

TEST_F(AgentCapabilities, AreAddedWithEachSession) {
  session().AddAgentCaps(kSubtree, "what it can do", "", now);
  StartOpen();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(std::get<reference::AddAgentCaps>(sent[0].body).description,
            "what it can do");
  Answer(sent[0]);
  EXPECT_THAT(Told(), ElementsAre("caps 1.3.6.1.4.1.32473.1: noError"));
  session().Disconnected(now, "gone");
  Pass(options.firstRetry);
  session().Connected(now);
  Answer(Sent().at(0));
  EXPECT_THAT(SentTypes(), ElementsAre("AddAgentCaps"));
}

TEST_F(AgentCapabilities, AreRemoved) {
  StartOpen();
  session().AddAgentCaps(kSubtree, "what it can do", "", now);
  session().AddAgentCaps(kSubtree, "what it can do", "rack", now);
  AnswerAll();
  session().RemoveAgentCaps(kAnother, "", now);
  EXPECT_THAT(SentTypes(), IsEmpty());
  session().RemoveAgentCaps(kSubtree, "rack", now);
  session().RemoveAgentCaps(kSubtree, "rack", now);
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].context, "rack");
  EXPECT_EQ(std::get<reference::RemoveAgentCaps>(sent[0].body).id,
            ToReference(Oid(kSubtree)));
  Answer(sent[0]);
  EXPECT_THAT(SentTypes(), IsEmpty());
}

TEST_F(AgentCapabilities, ThatAreRefusedAreAddedLater) {
  StartOpen();
  session().AddAgentCaps(kSubtree, "what it can do", "", now);
  Answer(Sent().at(0), Error::RequestDenied);
  EXPECT_THAT(Told(), ElementsAre("caps 1.3.6.1.4.1.32473.1: requestDenied"));
  EXPECT_THAT(session().RefusedRegistrations(), IsEmpty());
  Pass(options.firstRegistrationRetry);
  EXPECT_THAT(SentTypes(), ElementsAre("AddAgentCaps"));
}

}  // namespace
}  // namespace snmpsubagent::agentx
