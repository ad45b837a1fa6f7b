// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SessionTest.h"
#include "support/Samples.h"

namespace snmpsubagent::agentx {
namespace {

class ARequest : public SessionTest {
 protected:
  void SetUp() override { StartOpen(); }

  // The error of the only response sent; -1 if there is none.
  int ErrorSent() {
    const auto sent = Sent();
    if (sent.empty()) return -1;
    EXPECT_EQ(sent.size(), 1U);
    return std::get<reference::Response>(sent[0].body).error;
  }

  // A message with this type and payload.
  static Bytes MessageOf(std::uint8_t type, const Bytes& payload) {
    Bytes bytes = reference::Encode(
        {{1, kNetworkByteOrder, kSessionId, 1, 1}, {}, reference::CommitSet{}});
    bytes[1] = type;
    bytes[19] = static_cast<std::uint8_t>(payload.size());
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
  }
};

class AResponse : public SessionTest {};

TEST_F(ARequest, IsHandedOverAndAnsweredWithItsIds) {
  Receive(reference::GetNext{{{{1, 3}, true, {1, 4}}}}, kSessionId, 4712);
  EXPECT_THAT(Told(), ElementsAre("request"));
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].header.sessionId, kSessionId);
  EXPECT_EQ(sent[0].header.transactionId, 9U);
  EXPECT_EQ(sent[0].header.packetId, 4712U);
}

TEST_F(ARequest, OfEachTypeIsHandedOver) {
  const auto samples = reference::Samples();
  for (int type = static_cast<int>(PduType::Get);
       type <= static_cast<int>(PduType::CleanupSet); ++type) {
    requests.clear();
    EXPECT_TRUE(Receive(samples[static_cast<std::size_t>(type - 1)]));
    ASSERT_EQ(requests.size(), 1U) << type;
    EXPECT_EQ(static_cast<int>(requests[0].type), type);
    const bool answered = !Sent().empty();
    EXPECT_EQ(answered, type != static_cast<int>(PduType::CleanupSet)) << type;
  }
}

TEST_F(ARequest, ThatCannotBeParsedIsAnsweredWithParseError) {
  EXPECT_TRUE(Receive(MessageOf(5, {1, 2, 3, 4})));
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_EQ(ErrorSent(), static_cast<int>(Error::ParseError));
}

TEST_F(ARequest, OfATypeThatASubagentHasNoUseForIsAnsweredWithParseError) {
  for (const int type : {0, 1, 3, 4, 12, 13, 14, 15, 16, 17, 19, 255}) {
    EXPECT_TRUE(Receive(MessageOf(static_cast<std::uint8_t>(type), {})));
    EXPECT_EQ(ErrorSent(), static_cast<int>(Error::ParseError)) << type;
  }
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ARequest, OfAnotherSessionIsAnsweredWithNotOpen) {
  EXPECT_TRUE(Receive(reference::Get{}, kSessionId + 1));
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_EQ(ErrorSent(), static_cast<int>(Error::NotOpen));
}

TEST_F(ARequest, ThatCannotBeParsedIsNotLookedAtFurther) {
  Bytes bytes = MessageOf(5, {1, 2, 3, 4});
  bytes[7] = kSessionId + 1;
  Receive(bytes);
  EXPECT_EQ(ErrorSent(), static_cast<int>(Error::ParseError));
}

TEST_F(ARequest, IsNeverAnsweredWhenItIsACleanupSet) {
  Receive(reference::CleanupSet{}, kSessionId + 1);
  Receive(MessageOf(11, {1, 2, 3, 4}));
  EXPECT_EQ(ErrorSent(), -1);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ARequest, ToCloseAnotherSessionIsAnsweredWithNotOpen) {
  EXPECT_TRUE(Receive(reference::Close{5}, kSessionId + 1));
  EXPECT_EQ(ErrorSent(), static_cast<int>(Error::NotOpen));
  EXPECT_TRUE(session().IsOpen());
}

TEST_F(ARequest, ToCloseThatCannotBeParsedIsAnsweredWithParseError) {
  EXPECT_TRUE(Receive(MessageOf(2, {})));
  EXPECT_EQ(ErrorSent(), static_cast<int>(Error::ParseError));
  EXPECT_TRUE(session().IsOpen());
}

TEST_F(ARequest, MayArriveInPiecesOfAnySize) {
  Bytes three;
  for (std::uint32_t packetId = 1; packetId <= 3; ++packetId) {
    reference::Pdu pdu;
    pdu.header.sessionId = kSessionId;
    pdu.header.packetId = packetId;
    pdu.body = reference::Get{{{{1, 3, 6, packetId}, false, {}}}};
    const Bytes one = reference::Encode(pdu);
    three.insert(three.end(), one.begin(), one.end());
  }
  for (std::size_t piece = 1; piece <= three.size(); ++piece) {
    for (std::size_t at = 0; at < three.size(); at += piece) {
      const std::size_t size = std::min(piece, three.size() - at);
      ASSERT_TRUE(session().Receive(&three[at], size, now));
    }
    const auto sent = Sent();
    ASSERT_EQ(sent.size(), 3U) << piece;
    for (std::uint32_t i = 0; i < 3; ++i) {
      EXPECT_EQ(sent[i].header.packetId, i + 1);
    }
  }
}

TEST_F(ARequest, IsAnsweredLater) {
  Receive(reference::CleanupSet{}, kSessionId, 5);
  Bytes response;
  ResponseWriter writer(response, requests.at(0));
  writer.Finish();
  session().Send(requests.at(0), response, now);
  EXPECT_EQ(Sent().at(0).header.packetId, 5U);
}

TEST_F(ARequest, IsNotAnsweredInAnotherSession) {
  Receive(reference::CleanupSet{}, kSessionId, 5);
  session().Disconnected(now, "gone");
  const Bytes response(kHeaderSize, 0);
  session().Send(requests.at(0), response, now);
  EXPECT_TRUE(session().Output().empty());
  Pass(options.firstRetry);
  session().Connected(now);
  session().Send(requests.at(0), response, now);
  Answer(Sent().at(0));  // with the same sessionId
  session().Send(requests.at(0), response, now);
  EXPECT_TRUE(session().Output().empty());
}

// What the session is called for meanwhile is a message of its own.
TEST_F(ARequest, MayNotifyAndRegisterWhileItIsAnswered) {
  whenTold = [&](const std::string&) {
    whenTold = nullptr;
    Notify();
    Register("1.3.6.1.4.1.32473.1");
  };
  Receive(reference::Get{});
  EXPECT_THAT(SentTypes(), ElementsAre("Notify", "Register", "Response"));
}

TEST_F(ARequest, MayStopTheSession) {
  whenTold = [&](const std::string&) {
    whenTold = nullptr;
    session().Stop(now);
  };
  Bytes two = MessageOf(9, {});
  two.insert(two.end(), two.begin(), two.end());
  EXPECT_FALSE(Receive(two));
  EXPECT_THAT(Told(), ElementsAre("request", "ended: it was stopped"));
  EXPECT_THAT(SentTypes(), ElementsAre("Close"));
}

TEST_F(ARequest, EndsTheSessionWhenItIsShortOfMemory) {
  whenTold = [&](const std::string&) {
    whenTold = nullptr;
    throw std::bad_alloc();
  };
  EXPECT_FALSE(Receive(reference::Get{}));
  EXPECT_THAT(Told(),
              ElementsAre("request", "ended: there is no memory for it"));
}

TEST_F(ARequest, EndsTheSessionWhenNothingIsTakenOfTheAnswers) {
  answerSize = 1024 * 1024;
  const Bytes get = MessageOf(10, {});
  bool keep = true;
  for (int i = 0; keep && i < 100; ++i) keep = Receive(get);
  EXPECT_FALSE(keep);
  EXPECT_EQ(told.back(),
            "ended: the master agent does not take what it has asked for");
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AResponse, ThatCannotBeParsedIsDropped) {
  StartOpen();
  Register("1.3.6.1.4.1.32473.1");
  const std::uint32_t packetId = Sent().at(0).header.packetId;
  Bytes bytes =
      reference::Encode({{1, kNetworkByteOrder, kSessionId, 1, packetId},
                         {},
                         reference::Response{}});
  bytes.resize(bytes.size() - 4);
  bytes[19] = 4;
  EXPECT_TRUE(Receive(bytes));
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AResponse, ToNothingThatWasAskedIsDropped) {
  StartOpen();
  EXPECT_TRUE(Receive(reference::Response{}, kSessionId, 4711));
  Register("1.3.6.1.4.1.32473.1");
  const auto request = Sent().at(0);
  EXPECT_TRUE(Answer(request));
  Told();
  EXPECT_TRUE(Answer(request));  // once more
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_TRUE(session().Output().empty());
}

// Both sides number their own messages.
TEST_F(ARequest, WithThePacketIdOfOneOfOursIsNoResponseToIt) {
  Register("1.3.6.1.4.1.32473.1");
  const auto sent = Sent();
  Receive(reference::Get{}, kSessionId, sent.at(0).header.packetId);
  EXPECT_THAT(Told(), ElementsAre("request"));
  Answer(sent[0]);
  EXPECT_THAT(Told(), ElementsAre("registration 1: noError"));
}

TEST_F(AResponse, IsMatchedByItsPacketIdInAnyOrder) {
  StartOpen();
  Register("1.3.6.1.4.1.32473.1");
  Register("1.3.6.1.4.1.32473.2");
  const auto sent = Sent();
  Answer(sent.at(1));
  EXPECT_THAT(Told(), ElementsAre("registration 2: noError"));
  Answer(sent.at(0), Error::RequestDenied);
  EXPECT_THAT(Told(), ElementsAre("registration 1: requestDenied"));
}

}  // namespace
}  // namespace snmpsubagent::agentx
