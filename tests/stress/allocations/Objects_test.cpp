// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Objects that run out of memory: built, served, written, sent and answered.
#include <gtest/gtest.h>
#include <poll.h>
#include <snmpsubagent.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "FailingNew.h"
#include "PatientOptions.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

namespace snmp = snmpsubagent;
namespace wire = testkit::agentx;

namespace {

using namespace std::chrono_literals;

constexpr char kSubtree[] = "1.3.6.1.4.1.32473.7";
constexpr std::uint16_t kDuplicateRegistration = 263;
constexpr char kLongText[] = "a text that is too long to lie inline";

wire::Oid Id(std::uint32_t object) {
  return {1, 3, 6, 1, 4, 1, 32473, 7, object, 0};
}
wire::Get GetOf(std::uint32_t object) {
  return {{{Id(object), false, {}}, {Id(1), false, {}}}};
}

// An agent without a thread of its own, and its master agent.
class Device {
 public:
  Device()
      : agent(kLongText, PatientOptions("tcp:127.0.0.1:" +
                                        std::to_string(listener_.Port()))),
        module(agent, kSubtree) {}

  void Connect(std::size_t registrations = 1) {
    descriptor_ = agent.Poll();
    With([&] { Accept(registrations); });
  }

  // Runs the agent on this thread until what was sent before has been served.
  void Dispatch() {
    for (int i = 0; i < 3; ++i) {
      pollfd waiting{descriptor_, POLLIN, 0};
      poll(&waiting, 1, i == 0 ? 10000 : 2);
      agent.Dispatch();
    }
  }

  // Whether a manager gets object 1 and `object`, perhaps in a new session.
  bool Serves(std::uint32_t object = 1) {
    bool serves = false;
    With([&] {
      for (int attempt = 0; attempt < 3; ++attempt) {
        try {
          serves = IsServed(object);
          return;
        } catch (const wire::NoSubAgent&) {
          Accept(1);
        }
      }
    });
    return serves;
  }

  // A whole SET; its error.
  int Set(const std::vector<wire::Varbind>& varbinds) {
    int error = -1;
    With([&] {
      const auto id = session->NewTransaction();
      error = session->Ask(wire::TestSet{varbinds}, id).error;
      if (error == 0) error = session->Ask(wire::CommitSet{}, id).error;
      session->Send(wire::CleanupSet{}, id);
    });
    return error;
  }

 private:
  void Accept(std::size_t registrations) {
    session.emplace(listener_.Accept(60s), 60s);
    session->Grant(session->Next());
    session->ServeUntil(
        [&] { return session->Registered().size() >= registrations; });
  }

  bool IsServed(std::uint32_t object) {
    const std::uint32_t id = session->Send(GetOf(object));
    wire::Pdu pdu = session->Receive();
    while (pdu.header.packetId != id) pdu = session->Receive();
    const auto& varbinds = std::get<wire::Response>(pdu.body).varbinds;
    return varbinds.size() == 2 &&
           varbinds[0].value.type < wire::Type::kNoSuchObject &&
           varbinds[1].value.type < wire::Type::kNoSuchObject;
  }

  // Does the master agent's part while another thread runs the agent.
  void With(const std::function<void()>& master) {
    std::atomic<bool> done{false};
    std::thread loop([&] {
      while (!done) {
        pollfd waiting{descriptor_, POLLIN, 0};
        poll(&waiting, 1, 5);
        agent.Dispatch();
      }
    });
    EXPECT_NO_THROW(master());
    done = true;
    loop.join();
  }

  wire::Listener listener_;
  int descriptor_ = -1;

 public:
  std::optional<wire::MasterSession> session;
  snmp::Agent agent;
  snmp::Module module;
};

wire::Value Text(const std::string& text) {
  return {wire::Type::kOctetString, text};
}

TEST(AnAgent, IsBuiltWholeOrNotAtAll) {
  WithEachAllocationFailing([](const auto& fail) {
    fail([] { const snmp::Agent agent(kLongText); });
  });
}

TEST(AModule, IsBuiltWholeOrNotAtAll) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    const snmp::Scalar one(device.module, "1", kLongText);
    std::optional<snmp::Module> module;
    const bool built =
        fail([&] { module.emplace(device.agent, "1.3.6.1.4.1.32473.8"); });
    EXPECT_EQ(module.has_value(), built);
    device.Connect(built ? 2 : 1);
    EXPECT_TRUE(device.Serves());
    EXPECT_EQ(device.session->Registered().size(), built ? 2U : 1U);
  });
}

TEST(AScalar, IsServedWholeOrNotAtAll) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    const snmp::Scalar one(device.module, "1", kLongText);
    device.Connect();
    std::optional<snmp::Scalar<std::string>> scalar;
    const bool built = fail([&] {
      scalar.emplace(device.module, "2", kLongText,
                     snmp::ReadWrite().Size(1, 64).Size(100));
    });
    EXPECT_EQ(scalar.has_value(), built);
    EXPECT_EQ(device.Serves(2), built);
    EXPECT_TRUE(device.Serves(1));
  });
}

TEST(AScalar, TakesItsFunctionsOrNot) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    snmp::Scalar one(device.module, "1", std::string("x"), snmp::ReadWrite());
    device.Connect();
    const std::string captured = kLongText;
    const bool taken = fail(
        [&] { one.Apply([captured](const std::string&) { return false; }); });
    EXPECT_EQ(device.Set({{Id(1), Text("y")}}), taken ? 14 : 0);
  });
}

TEST(AnAgent, ServesOnAfterARequestForWhichThereWasNoMemory) {
  const std::vector<wire::Body> requests{
      GetOf(2), wire::GetNext{{{Id(1), false, {}}, {Id(2), true, {}}}},
      wire::GetBulk{0, 20, {{Id(0), false, {}}, {Id(1), true, {}}}}};
  for (const wire::Body& request : requests) {
    WithEachAllocationFailing([&](const auto& fail) {
      Device device;
      const snmp::Scalar one(device.module, "1", kLongText);
      const snmp::Scalar two(device.module, "2",
                             [] { return std::string(kLongText); });
      device.Connect();
      device.session->Send(request);
      EXPECT_TRUE(fail([&] { device.Dispatch(); }));
      EXPECT_TRUE(device.Serves(2));
    });
  }
}

TEST(ASet, IsStoredWholeOrNotAtAll) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    const std::string before = kLongText;
    const std::string after = before + before;
    snmp::Scalar one(device.module, "1", before, snmp::ReadWrite());
    snmp::Scalar two(device.module, "2", before, snmp::ReadWrite());
    one.Check([](const std::string& text) { return !text.empty(); });
    two.Apply(
        [](const std::string& text) { return !std::string(text).empty(); });
    two.Changed([](const std::string& text) { const std::string copy = text; });
    device.Connect();
    const auto id = device.session->NewTransaction();
    device.session->Send(
        wire::TestSet{{{Id(1), Text(after)}, {Id(2), Text(after)}}}, id);
    device.session->Send(wire::CommitSet{}, id);
    device.session->Send(wire::CleanupSet{}, id);
    EXPECT_TRUE(fail([&] { device.Dispatch(); }));
    EXPECT_TRUE(device.Serves(2));
    EXPECT_EQ(one.Get(), two.Get());
    EXPECT_TRUE(one.Get() == before || one.Get() == after);
    EXPECT_EQ(device.Set({{Id(1), Text("x")}, {Id(2), Text("x")}}), 0);
    EXPECT_EQ(two.Get(), "x");
  });
}

TEST(ANotification, IsSentWithItsOutcomeOrNotAtAll) {
  WithEachAllocationFailing([](const auto& fail) {
    int outcomes = 0;
    bool sent = false;
    {
      Device device;
      snmp::Notification notification(device.module, "0.1");
      const snmp::Scalar one(device.module, "1", kLongText);
      device.Connect();
      sent = fail([&] {
        notification.Send({one, {"1.3.6.1.4.1.32473.7.9.0", kLongText}},
                          [&](const snmp::NotificationResult&) { ++outcomes; });
      });
      EXPECT_TRUE(device.Serves());
    }
    EXPECT_EQ(outcomes, sent ? 1 : 0);
  });
}

TEST(ANotification, ThatIsRefusedHasItsOutcome) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    snmp::Notification notification(device.module, "0.1");
    device.Connect();
    int outcomes = 0;
    notification.Send({}, [&](const snmp::NotificationResult& result) {
      EXPECT_EQ(result.outcome, snmp::NotificationResult::Refused);
      ++outcomes;
    });
    device.session->Answer(device.session->Next(), kDuplicateRegistration);
    EXPECT_TRUE(fail([&] { device.Dispatch(); }));
    EXPECT_EQ(outcomes, 1);
  });
}

TEST(ALaterAnswer, IsGivenOrTheRequestFails) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    const snmp::Scalar one(device.module, "1", kLongText);
    std::optional<snmp::Later<std::string>> reply;
    const snmp::Scalar two(
        device.module, "2",
        [&](snmp::Later<std::string> later) { reply = std::move(later); });
    device.Connect();
    device.session->Send(GetOf(2));
    device.Dispatch();
    const std::string text = kLongText;
    fail([&] { reply->Answer(text); });
    reply.reset();
    EXPECT_TRUE(device.Serves(1));
  });
}

TEST(ALaterAnswer, IsDroppedWithoutMemory) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    snmp::Scalar one(device.module, "1", std::string(kLongText),
                     snmp::ReadWrite());
    std::optional<snmp::Later<snmp::SetError>> reply;
    one.Apply(
        [&](const std::string&, const std::string&,
            snmp::Later<snmp::SetError> later) { reply = std::move(later); });
    device.Connect();
    const auto id = device.session->NewTransaction();
    device.session->Send(wire::TestSet{{{Id(1), Text("x")}}}, id);
    device.session->Send(wire::CommitSet{}, id);
    device.Dispatch();
    EXPECT_TRUE(fail([&] { reply.reset(); }));
    EXPECT_EQ(one.Get(), kLongText);
    EXPECT_TRUE(device.Serves());
  });
}

TEST(ASet, IsUndoneByAStopWithoutMemory) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    snmp::Scalar one(device.module, "1", std::string(kLongText),
                     snmp::ReadWrite());
    device.Connect();
    const auto id = device.session->NewTransaction();
    device.session->Send(wire::TestSet{{{Id(1), Text("x")}}}, id);
    device.session->Send(wire::CommitSet{}, id);
    device.Dispatch();
    EXPECT_EQ(one.Get(), "x");
    EXPECT_TRUE(fail([&] { device.agent.Stop(); }));
    EXPECT_TRUE(one.Get() == kLongText);
  });
}

TEST(AnAgent, StopsWithoutMemory) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    const snmp::Scalar one(device.module, "1", kLongText);
    device.Connect();
    EXPECT_TRUE(fail([&] { device.agent.Stop(); }));
    EXPECT_FALSE(device.agent.Connected());
    device.Connect();
    EXPECT_TRUE(device.Serves());
  });
}

}  // namespace
