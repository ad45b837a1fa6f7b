// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <array>
#include <numeric>

#include "FailingNew.h"
#include "agentx/ResponseWriter.h"
#include "agentx/Session.h"
#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {
namespace {

constexpr std::uint32_t kSessionId = 5;

// Counts, and takes no memory for it.
class CountingUser : public SessionUser {
 public:
  void OnOpened() override { ++opened; }
  void OnEnded(std::string_view) override { --opened; }
  void OnAttemptFailed(std::string_view) override {}
  void OnRequest(const Request& request, Bytes& response) override {
    ResponseWriter writer(response, request.header);
    for (const SearchRange& range : *request.ranges) {
      writer.Varbinds().Name(range.start);
      writer.Varbinds().Integer(21);
    }
    writer.Finish();
  }
  void OnRegistration(std::uint32_t, Error) override {}
  void OnNotification(std::uint64_t id, NotificationOutcome, Error) override {
    ++outcomes.at(id);
  }

  int opened = 0;
  std::array<int, 16> outcomes{};
};

Bytes MessageOf(reference::Body body, std::uint32_t packetId) {
  return reference::Encode(
      {{1, kNetworkByteOrder, kSessionId, 1, packetId}, {}, std::move(body)});
}

const Bytes& GetMessage() {
  static const Bytes get =
      MessageOf(reference::Get{{{{1, 3, 6, 1, 4, 1, 32473, 1}, true, {}},
                                {{1, 3, 6, 1, 4, 1, 32473, 2}, true, {}}}},
                9);
  return get;
}

// The responses to the first requests of a session.
const std::vector<Bytes>& Responses() {
  static const std::vector<Bytes> responses = [] {
    std::vector<Bytes> made;
    for (std::uint32_t packetId = 1; packetId <= 8; ++packetId) {
      made.push_back(MessageOf(reference::Response{}, packetId));
    }
    return made;
  }();
  return responses;
}

class SessionWithoutMemory {
 public:
  void Receive(const Bytes& bytes) {
    session.Receive(bytes.data(), bytes.size(), now);
  }
  void Notify() {
    session.Notify({}, "", now);
    ++notified;
  }
  void Open() {
    session.Start(now);
    session.Connected(now);
    Receive(Responses()[0]);
  }

  Time now = Time() + std::chrono::hours(1);
  CountingUser user;
  Session session{SessionOptions(), user};
  int notified = 0;
};

TEST(AnAgentXSession, NeedsNoMemoryToAnswerWhatItHasAnsweredBefore) {
  SessionWithoutMemory it;
  it.Open();
  for (int round = 0; round < 3; ++round) {
    const AllocationFailure failure(round == 0 ? 0 : 1);
    it.session.Output().Sent(it.session.Output().size());
    it.Receive(GetMessage());
    EXPECT_FALSE(failure.Happened()) << round;
    EXPECT_FALSE(it.session.Output().empty());
  }
}

// Whichever allocation fails, wherever it is in the life of a session.
TEST(AnAgentXSession, HasOneOutcomeForEachNotificationWhateverAllocationFails) {
  GetMessage();
  Responses();
  WithEachAllocationFailing([&](const auto& fail) {
    SessionWithoutMemory it;
    fail([&] {
      it.Notify();
      const std::uint32_t id =
          it.session.Register({"1.3.6.1.4.1.32473", "", 127, {}}, it.now);
      it.session.AddAgentCaps("1.3.6", "what it can do", "", it.now);
      it.Open();
      it.Receive(GetMessage());
      it.Notify();
      it.session.Unregister(id, it.now);
      for (const Bytes& response : Responses()) it.Receive(response);
      it.session.Output().Sent(it.session.Output().size());
      it.Notify();
      it.session.Disconnected(it.now, "gone");
      it.Notify();
    });
    EXPECT_EQ(it.user.opened, it.session.IsOpen() ? 1 : 0);
    it.session.Stop(it.now);
    EXPECT_EQ(
        std::accumulate(it.user.outcomes.begin(), it.user.outcomes.end(), 0),
        it.notified);
    for (const int outcomes : it.user.outcomes) EXPECT_LE(outcomes, 1);
  });
}

TEST(AnAgentXSession, IsToldToHaveEndedOnlyIfItWasToldToBeOpen) {
  Responses();
  WithEachAllocationFailing([&](const auto& fail) {
    SessionWithoutMemory it;
    for (SubIdentifier i = 1; i <= 300; ++i) {
      it.session.Register({{1, 3, 6, i}, "", 127, {}}, it.now);
    }
    EXPECT_TRUE(fail([&] { it.Open(); }));
    EXPECT_EQ(it.user.opened, it.session.IsOpen() ? 1 : 0);
  });
}

// The next session is as good as any.
TEST(AnAgentXSession, GoesOnAfterAnAllocationThatFailed) {
  GetMessage();
  Responses();
  WithEachAllocationFailing([&](const auto& fail) {
    SessionWithoutMemory it;
    it.session.Register({"1.3.6.1.4.1.32473", "", 127, {}}, it.now);
    it.session.Start(it.now);
    fail([&] {
      it.session.Connected(it.now);
      for (const Bytes& response : Responses()) it.Receive(response);
      it.Receive(GetMessage());
    });
    if (!it.session.IsOpen()) {
      it.session.Advance(it.now + std::chrono::hours(1));
      ASSERT_TRUE(it.session.WantsConnection());
      it.session.Connected(it.now);
      for (std::uint32_t packetId = 2; packetId < 8; ++packetId) {
        it.Receive(MessageOf(reference::Response{}, packetId));
      }
    }
    EXPECT_TRUE(it.session.IsRegistered(1));
  });
}

}  // namespace
}  // namespace snmpsubagent::agentx
