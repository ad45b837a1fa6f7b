// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a subagent sends to its master agent, field by field.
#include <future>
#include <thread>

#include "FakeMasterTest.h"
#include "Faults.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "support/Scalars.h"

namespace agentx = testkit::agentx;

using testing::ElementsAre;
using testkit::agentx::Oid;
using testkit::agentx::Pdu;
using testkit::agentx::Register;
using testkit::agentx::Type;
using testkit::agentx::Unregister;
using testkit::agentx::Varbind;

namespace {

const Oid kSysUpTime{1, 3, 6, 1, 2, 1, 1, 3, 0};
const Oid kSnmpTrapOid{1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

class ASubAgentOnTheWire : public FakeMasterTest {
 protected:
  // The messages up to the last registration, all granted.
  std::vector<Pdu> ConnectAndRecord() {
    device_.Start();
    session_ = master_.Accept();
    std::vector<Pdu> messages;
    while (session_->Registered().size() < Device::Subtrees().size()) {
      messages.push_back(session_->Next());
      session_->Grant(messages.back());
    }
    return messages;
  }
};

bool IsInstance(const Pdu& message) {
  return (message.header.flags & agentx::kInstanceRegistration) != 0;
}

TEST_F(ASubAgentOnTheWire, OpensASessionThatHasNoIdYet) {
  const std::vector<Pdu> messages = ConnectAndRecord();
  EXPECT_TRUE(std::holds_alternative<agentx::Open>(messages[0].body));
  EXPECT_EQ(messages[0].header.sessionId, 0U);
}

TEST_F(ASubAgentOnTheWire, RegistersItsNodesInTheOrderOfTheirNames) {
  ConnectAndRecord();
  EXPECT_EQ(session_->Registered(), Device::Subtrees());
}

TEST_F(ASubAgentOnTheWire,
       RegistersSubtreesWithoutRangeAtDefaultPriorityAndTimeout) {
  const std::vector<Pdu> messages = ConnectAndRecord();
  ASSERT_EQ(messages.size(), 1 + Device::Subtrees().size());
  for (std::size_t i = 1; i < messages.size(); ++i) {
    const auto& registration = std::get<Register>(messages[i].body);
    EXPECT_EQ(registration.priority, 127);
    EXPECT_EQ(registration.rangeSubid, 0);
    EXPECT_EQ(registration.timeout, 0);
    EXPECT_EQ(messages[i].context, std::nullopt);
  }
}

TEST_F(ASubAgentOnTheWire, RegistersScalarsAloneAsInstances) {
  const std::vector<Pdu> messages = ConnectAndRecord();
  std::vector<Oid> instances;
  for (const Pdu& message : messages) {
    if (!IsInstance(message)) continue;
    instances.push_back(std::get<Register>(message.body).subtree);
  }
  EXPECT_THAT(instances, ElementsAre(Device::Scalar()));
}

TEST_F(ASubAgentOnTheWire, NamesItsSessionInWhateverItSends) {
  std::vector<Pdu> messages = ConnectAndRecord();
  messages.erase(messages.begin());
  device_.Notify();
  messages.push_back(session_->Next());
  session_->Grant(messages.back());
  messages.push_back(session_->Next());  // a ping
  EXPECT_TRUE(std::holds_alternative<agentx::Ping>(messages.back().body));
  session_->Grant(messages.back());
  session_->Send(agentx::Get{{{Device::Scalar(), true, {}}}});
  messages.push_back(session_->Receive());
  for (const Pdu& message : messages) {
    EXPECT_EQ(message.header.sessionId, session_->Id());
  }
}

TEST_F(ASubAgentOnTheWire, SendsItsNotificationsWithTheirObjects) {
  Connect();
  device_.Notify();
  std::vector<agentx::Notify> sent;
  session_->ServeUntil([&] {
    sent = session_->TakeNotifications();
    return !sent.empty();
  });
  ASSERT_EQ(sent.size(), 1U);
  const std::vector<Varbind> varbinds = sent[0].varbinds;
  ASSERT_EQ(varbinds.size(), 3U);
  EXPECT_EQ(varbinds[0].name, kSysUpTime);
  EXPECT_EQ(varbinds[0].value.type, Type::kTimeTicks);
  EXPECT_EQ(varbinds[1],
            (Varbind{kSnmpTrapOid, {Type::kObjectId, Device::Notification()}}));
  EXPECT_EQ(varbinds[2],
            (Varbind{Device::Scalar(), {Type::kInteger, std::int32_t{7}}}));
}

TEST_F(ASubAgentOnTheWire, WithdrawsADeletedNodeAsItRegisteredIt) {
  Connect();
  const auto deleted = std::async(
      std::launch::async, [] { delete NetSNMPNode::nodeMap_->at("a level"); });
  Pdu message = session_->Next();
  while (std::holds_alternative<agentx::Ping>(message.body)) {
    session_->Grant(message);
    message = session_->Next();
  }
  session_->Grant(message);
  deleted.wait();
  const auto& withdrawal = std::get<Unregister>(message.body);
  EXPECT_EQ(withdrawal.subtree, Device::Scalar());
  EXPECT_EQ(withdrawal.priority, 127);
  EXPECT_EQ(withdrawal.rangeSubid, 0);
  EXPECT_EQ(message.header.sessionId, session_->Id());
}

TEST_F(ASubAgentOnTheWire, RegistersTheTableOfADeletedDataSetInEachSession) {
  ConnectAndRecord();
  {
    const NetSNMPAgentGuard guard;
    delete NetSNMPNode::nodeMap_->at("events");
  }
  session_.reset();
  session_ = master_.AcceptServing(Device::Subtrees().size());
  EXPECT_THAT(session_->Registered(),
              testing::UnorderedElementsAreArray(Device::Subtrees()));
}

// Records the thread that it is called on.
class ThreadReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int /*state*/) override {
    thread_ = std::this_thread::get_id();
  }
  std::thread::id Thread() const { return thread_; }

 private:
  std::thread::id thread_;
};

TEST_F(ASubAgentOnTheWire, TellsOfALossOnTheThreadThatWaitsForAResponse) {
  ConnectAndRecord();
  ThreadReceiver receiver;
  {
    const NetSNMPAgentGuard guard;
    device_.SubAgent().RegisterSubAgentCallback("thread", &receiver);
  }
  std::thread application([] { support::AddIntScalar(5, "late", 5); });
  const std::thread::id thread = application.get_id();
  Pdu message = session_->Next();
  while (!std::holds_alternative<agentx::Register>(message.body)) {
    session_->Grant(message);
    message = session_->Next();
  }
  session_.reset();
  application.join();
  const NetSNMPAgentGuard guard;
  EXPECT_EQ(receiver.Thread(), thread);
  device_.SubAgent().UnregisterSubAgentCallback("thread");
}

// Each of the bytes comes with a packet of its own.
TEST_F(ASubAgentOnTheWire, TakesAnAnswerInPieces) {
  Connect();
  const Pdu ping = session_->Next();
  for (const std::uint8_t byte : NextMessage(*session_, ping)) {
    session_->SendBytes({byte});
  }
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
  EXPECT_EQ(device_.Receiver().States(), std::vector<int>{1});
}

// One test for each byte order (RFC 2741, section 6.1).
class ASessionOnTheWire : public FakeMasterTest,
                          public testing::WithParamInterface<std::uint8_t> {
 protected:
  ASessionOnTheWire() { Connect(); }

  Pdu Ask(const agentx::Body& request) {
    session_->SetByteOrder(GetParam());
    session_->Send(request);
    return session_->Receive();
  }
};

TEST_P(ASessionOnTheWire, AnswersInTheByteOrderOfTheRequest) {
  const Pdu answer = Ask(agentx::Get{{{Device::Scalar(), true, {}}}});
  EXPECT_EQ(answer.header.flags & agentx::kNetworkByteOrder, GetParam());
  EXPECT_THAT(std::get<agentx::Response>(answer.body).varbinds,
              ElementsAre(device_.Objects().front()));
}

TEST_P(ASessionOnTheWire, ServesAllObjectsInEitherByteOrder) {
  session_->SetByteOrder(GetParam());
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
}

TEST_P(ASessionOnTheWire, AnswersManyObjectsAtOnceInEitherByteOrder) {
  const Pdu answer =
      Ask(agentx::GetBulk{0, 2, {{Device::Subtrees()[2], true, {}}}});
  const std::vector<Varbind> objects = device_.Objects();
  EXPECT_THAT(std::get<agentx::Response>(answer.body).varbinds,
              ElementsAre(objects[2], objects[3]));
}

TEST_P(ASessionOnTheWire, TakesValuesInEitherByteOrder) {
  session_->SetByteOrder(GetParam());
  const Varbind written{Device::Scalar(), {Type::kInteger, -0x01020304}};
  EXPECT_EQ(session_->Set({written}).error, 0);
  EXPECT_EQ(device_.Objects().front(), written);
}

INSTANTIATE_TEST_SUITE_P(BigEndian, ASessionOnTheWire,
                         testing::Values(agentx::kNetworkByteOrder));
INSTANTIATE_TEST_SUITE_P(LittleEndian, ASessionOnTheWire, testing::Values(0));

}  // namespace
