// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <algorithm>

#include "SessionTest.h"
#include "support/Samples.h"

namespace snmpsubagent::agentx {
namespace {

enum class At { Opening, Open, Asking, Notifying };

// A session at one of its states, whose outputs and outcomes are held together
// whatever bytes come: it goes on, or it ends and says so.
class BrokenBytes : public testing::TestWithParam<At> {
 protected:
  // A session of its own, since most of what is tried ends it.
  class Trial : public SessionInHand {
   public:
    explicit Trial(At state) {
      if (state == At::Opening) {
        StartOpening();
      } else {
        StartOpen();
      }
      if (state == At::Asking) Register("1.3.6.1.4.1.32473.1");
      if (state == At::Notifying) Notify();
      Sent();
      told.clear();
    }
    // Gives it the bytes; what it does has to fit together.
    void Give(const Bytes& bytes) {
      const bool keep = Receive(bytes);
      EXPECT_EQ(keep, Ended() == 0) << testing::PrintToString(told);
      EXPECT_LE(Ended(), 1);
      for (const reference::Pdu& pdu : Sent()) {
        const bool close = std::holds_alternative<reference::Close>(pdu.body);
        EXPECT_TRUE(!close || !keep);
      }
      EXPECT_EQ(session().WantsConnection(), false);
      EXPECT_TRUE(keep || !session().IsOpen());
      EXPECT_TRUE(session().NextDeadline());
    }

    // A Get is answered, so the session still knows where messages begin.
    bool Serves() {
      Receive(reference::Get{});
      return SentTypes() == std::vector<std::string>{"Response"};
    }

    int Ended() const {
      return static_cast<int>(
          std::count_if(told.begin(), told.end(), [](const std::string& what) {
            return what.rfind("ended", 0) == 0 || what.rfind("attempt", 0) == 0;
          }));
    }
  };

  // One of each type, in both byte orders, for a request of this session.
  static std::vector<Bytes> Messages() {
    std::vector<Bytes> messages;
    for (const std::uint8_t flags : {std::uint8_t{0}, kNetworkByteOrder}) {
      for (const reference::Body& body : reference::Samples()) {
        messages.push_back(reference::Encode(
            {{1, flags, SessionInHand::kSessionId, 1, 2}, "rack", body}));
      }
    }
    return messages;
  }
};

TEST_P(BrokenBytes, OfAMessageCutShortAreWaitedForAndNothingElse) {
  for (const Bytes& whole : Messages()) {
    for (std::size_t size = 0; size < whole.size(); size += 3) {
      Trial trial(GetParam());
      trial.Give({whole.begin(), whole.begin() + static_cast<long>(size)});
      EXPECT_THAT(trial.Told(), IsEmpty());
    }
  }
}

TEST_P(BrokenBytes, OfAMessageThatIsWholeLeaveTheSessionOrEndIt) {
  for (const Bytes& whole : Messages()) {
    Trial trial(GetParam());
    trial.Give(whole);
  }
}

TEST_P(BrokenBytes, OfAMessageWithOneOctetDamagedLeaveTheSessionOrEndIt) {
  for (const Bytes& whole : Messages()) {
    for (std::size_t place = 0; place < whole.size(); ++place) {
      for (const std::uint8_t damage : {0x01, 0x10, 0x80, 0xff}) {
        Bytes damaged = whole;
        damaged[place] ^= damage;
        Trial trial(GetParam());
        trial.Give(damaged);
        const bool framed = place < 16 && place != 0 && place != 2;
        if (!framed || !trial.session().IsOpen()) continue;
        EXPECT_TRUE(trial.Serves()) << place << ' ' << int{damage};
      }
    }
  }
}

TEST_P(BrokenBytes, OfRandomEndTheSession) {
  Bytes noise(4096);
  std::uint32_t state = 4711;
  for (std::uint8_t& octet : noise) {
    state = state * 1664525 + 1013904223;
    octet = static_cast<std::uint8_t>(state >> 24);
  }
  Trial trial(GetParam());
  trial.Give(noise);
  EXPECT_EQ(trial.Ended(), 1);
}

std::string StateName(const testing::TestParamInfo<At>& info) {
  const char* const names[] = {"Opening", "Open", "Asking", "Notifying"};
  return names[static_cast<int>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(AtEachState, BrokenBytes,
                         testing::Values(At::Opening, At::Open, At::Asking,
                                         At::Notifying),
                         StateName);

class AHeaderThatCannotBeTrusted : public SessionTest {
 protected:
  static Bytes WrongVersion() {
    Bytes bytes = reference::Encode({{}, {}, reference::CommitSet{}});
    bytes[0] = 2;
    return bytes;
  }
};

TEST_F(AHeaderThatCannotBeTrusted, EndsTheSessionWithItsReason) {
  StartOpen();
  EXPECT_FALSE(Receive(WrongVersion()));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent sent what is no "
                                  "AgentX message"));
  EXPECT_EQ(SentOnly<reference::Close>().reason,
            static_cast<int>(CloseReason::ParseError));
  Pass(options.firstRetry);
  EXPECT_TRUE(session().WantsConnection());
}

TEST_F(AHeaderThatCannotBeTrusted, EndsAnAttemptToOpen) {
  StartOpening();
  Sent();
  EXPECT_FALSE(Receive(WrongVersion()));
  EXPECT_THAT(Told(), ElementsAre("attempt failed: the master agent sent what "
                                  "is no AgentX message"));
  EXPECT_TRUE(session().Output().empty());
}

TEST_F(AHeaderThatCannotBeTrusted, IsOneThatAnnouncesMoreThanAMessageHas) {
  StartOpen();
  Bytes bytes = reference::Encode({{}, {}, reference::CommitSet{}});
  bytes[16] = 0x7f;
  EXPECT_FALSE(Receive(bytes));
}

// What is in front of the Close goes out with it, so it must not go out again.
TEST_F(AHeaderThatCannotBeTrusted, LeavesWhatWasWrittenUnanswered) {
  StartOpen();
  Notify();
  EXPECT_FALSE(Receive(WrongVersion()));
  EXPECT_EQ(told.back(), "notification 1: unanswered");
  EXPECT_THAT(SentTypes(), ElementsAre("Notify", "Close"));
}

TEST_F(AHeaderThatCannotBeTrusted, IsNotReachedBehindTheEndOfTheSession) {
  StartOpen();
  Bytes bytes = reference::Encode(
      {{1, kNetworkByteOrder, kSessionId, 1, 1}, {}, reference::Close{5}});
  const Bytes broken = WrongVersion();
  bytes.insert(bytes.end(), broken.begin(), broken.end());
  EXPECT_FALSE(Receive(bytes));
  EXPECT_THAT(Told(), ElementsAre("ended: the master agent closed it: "
                                  "reasonShutdown"));
}

}  // namespace
}  // namespace snmpsubagent::agentx
