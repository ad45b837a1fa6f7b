// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A master agent that misbehaves at every moment of a session, one after the
// other, and then behaves again.
#include "Faults.h"

#include <random>

#include "FakeMasterTest.h"

namespace agentx = testkit::agentx;

using testkit::agentx::Bytes;
using testkit::agentx::Master;
using testkit::agentx::MasterSession;
using testkit::agentx::Pdu;

namespace {

using Asked = std::optional<Pdu>;

// Waits a second for an answer, which a busy machine may let pass too.
constexpr char kHasty[] =
    "agentXPingInterval 1\n"
    "[snmp] timeout 1\n"
    "[snmp] retries 0\n";

class AFault : public FakeMasterTest {
 protected:
  AFault() : FakeMasterTest(kHasty) {}

  // Injects the fault at every moment; each time the subagent reconnects,
  // serves everything, and its receivers get 0 and 1 in turn.
  void StrikeAndRecover(const Fault& strike) {
    Connect();
    for (const Moment& moment : Moments()) {
      SCOPED_TRACE(moment.name);
      Patiently([&] { StrikeAt(moment, strike); });
      Patiently([this] { ExpectService(); });
      ASSERT_FALSE(HasFatalFailure());
    }
    ExpectReceiversToldInTurn();
  }

  // Does it again if the subagent has gone before it was done.
  void Patiently(const std::function<void()>& deed) {
    for (int attempt = 1; attempt < 5; ++attempt) {
      try {
        return deed();
      } catch (const agentx::NoSubAgent&) {
        session_ = master_.AcceptServing(Device::Subtrees().size());
      }
    }
    FAIL() << "the subagent goes again and again";
  }

  void ExpectService() {
    ASSERT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
    const agentx::Varbind level{
        Device::Scalar(), {agentx::Type::kInteger, std::int32_t{++level_}}};
    ASSERT_EQ(session_->Set({level}).error, 0);
    ASSERT_EQ(device_.Objects().front(), level);
    ASSERT_TRUE(device_.SubAgent().Connected());
  }

  void ExpectReceiversToldInTurn() {
    const std::vector<int> states = device_.Receiver().States();
    for (std::size_t i = 0; i < states.size(); ++i) {
      ASSERT_EQ(states[i], i % 2 == 0 ? 1 : 0) << "told in place " << i;
    }
    EXPECT_EQ(states.back(), 1);
  }

 private:
  void StrikeAt(const Moment& moment, const Fault& strike) {
    if (moment.from == Moment::From::kConnection) {
      session_.reset();
      session_ = master_.Accept();
    }
    const Asked asked = moment.reach(*session_, device_);
    strike(*session_, asked);
    // Open until there is another, unless the fault was to close it.
    const Master::Session struck = std::move(session_);
    session_ = master_.AcceptServing(Device::Subtrees().size());
  }

  int level_ = 100;
};

TEST_F(AFault, OfAClosedConnectionIsSurvivedAtAnyMoment) {
  StrikeAndRecover([this](MasterSession&, const Asked&) { session_.reset(); });
}

TEST_F(AFault, OfAResetConnectionIsSurvivedAtAnyMoment) {
  StrikeAndRecover(
      [](MasterSession& session, const Asked&) { session.Reset(); });
}

TEST_F(AFault, OfSilenceIsSurvivedAtAnyMoment) {
  StrikeAndRecover([](MasterSession&, const Asked&) {});
}

TEST_F(AFault, OfATruncatedMessageIsSurvivedAtAnyMoment) {
  StrikeAndRecover([](MasterSession& session, const Asked& asked) {
    Bytes message = NextMessage(session, asked);
    message.resize(message.size() / 2);
    session.SendBytes(message);
  });
}

TEST_F(AFault, OfAMessageCutOffByTheEndIsSurvivedAtAnyMoment) {
  StrikeAndRecover([this](MasterSession& session, const Asked& asked) {
    Bytes message = NextMessage(session, asked);
    message.resize(message.size() / 2);
    session.SendBytes(message);
    session_.reset();
  });
}

// The size in a header goes up to 4 GiB.
TEST_F(AFault, OfAnOversizedMessageIsSurvivedAtAnyMoment) {
  std::uint8_t size = 0;
  StrikeAndRecover([&size](MasterSession& session, const Asked& asked) {
    Bytes message = NextMessage(session, asked);
    size = static_cast<std::uint8_t>(size + 0x35);
    message[16] = size;
    message.resize(message.size() + 100000, size);
    session.SendBytes(message);
  });
}

// The payload has the size given in a proper header, so that the subagent reads
// it as one message. The packet ID is not that of the outstanding request: the
// agent library itself crashes on anything but a response to that.
TEST_F(AFault, OfGarbageInAProperFrameIsSurvivedAtAnyMoment) {
  std::mt19937 random(1);
  StrikeAndRecover([&random](MasterSession& session, const Asked& asked) {
    Bytes message = NextMessage(session, asked);
    message[12] ^= 0x80;  // packet id
    for (int type = 0; type <= 20; ++type) {
      message[1] = static_cast<std::uint8_t>(type);
      for (std::size_t i = agentx::kHeaderSize; i < message.size(); ++i) {
        message[i] = static_cast<std::uint8_t>(random());
      }
      session.SendBytes(message);
    }
  });
}

TEST_F(AFault, OfGarbageIsSurvivedAtAnyMoment) {
  std::mt19937 random(2);
  StrikeAndRecover([&random](MasterSession& session, const Asked&) {
    Bytes garbage(500);
    for (std::uint8_t& byte : garbage) {
      byte = static_cast<std::uint8_t>(random());
    }
    session.SendBytes(garbage);
  });
}

// Responses to no request, and requests for another session.
TEST_F(AFault, OfAWrongSessionIsSurvivedAtAnyMoment) {
  StrikeAndRecover([](MasterSession& session, const Asked& asked) {
    Bytes message = NextMessage(session, asked);
    message[4] ^= 0x80;   // session id
    message[12] ^= 0x80;  // packet id
    session.SendBytes(message);
  });
}

TEST_F(AFault, OfARefusalIsSurvivedAtAnyMoment) {
  constexpr std::uint16_t kNotOpen = 257;
  StrikeAndRecover([](MasterSession& session, const Asked& asked) {
    if (asked) session.Answer(*asked, kNotOpen);
  });
}

// The response arrives after the timeout, when the subagent sends the next
// request.
TEST_F(AFault, OfALateResponseIsSurvivedAtAnyMoment) {
  StrikeAndRecover([](MasterSession& session, const Asked& asked) {
    try {
      const Pdu next = session.Next();
      session.SendBytes(NextMessage(session, asked));
      if (!std::holds_alternative<agentx::Response>(next.body))
        session.SendBytes(NextMessage(session, next));
    } catch (const agentx::NoSubAgent&) {
      // It has closed the connection instead.
    }
  });
}

}  // namespace
