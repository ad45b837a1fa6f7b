// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent in an event loop of the application's, without a thread of its own.
#include <gtest/gtest.h>
#include <poll.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "Device.h"
#include "testkit/ScratchDirectory.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

std::size_t Threads() {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                    std::filesystem::directory_iterator()));
}

// A loop as an application has it, on this thread.
class APolledAgent : public testing::Test {
 protected:
  explicit APolledAgent(wire::Listener listener = wire::Listener())
      : device(Device::Options(), std::move(listener)) {}

  // Polls and dispatches until then; false if that takes too long.
  bool LoopUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!done()) {
      pollfd waiting{descriptor, POLLIN, 0};
      poll(&waiting, 1, 100);
      if ((waiting.revents & POLLIN) != 0) device.agent.Dispatch();
      if (std::chrono::steady_clock::now() >= end) return false;
    }
    return true;
  }

  // Runs the master agent's part beside the loop.
  void With(const std::function<void()>& master) {
    std::atomic<bool> done{false};
    std::thread thread([&] {
      EXPECT_NO_THROW(master());
      done = true;
    });
    EXPECT_TRUE(LoopUntil([&] { return done.load(); }));
    thread.join();
  }

  Device device;
  snmp::Module module{device.agent, kBase};
  int descriptor = -1;
};

class APolledAgentAtAUnixSocket : testkit::ScratchDirectory,
                                  public APolledAgent {
 protected:
  APolledAgentAtAUnixSocket()
      : APolledAgent(wire::Listener(std::string(Path() / "master"))) {}
};

TEST_F(APolledAgent, ServesOnTheThreadThatDispatches) {
  const auto here = std::this_thread::get_id();
  int asked = 0;
  snmp::Scalar told(module, "1", [&] {
    EXPECT_EQ(std::this_thread::get_id(), here);
    return ++asked;
  });
  snmp::Scalar held(module, "2", 2, snmp::ReadWrite());
  held.Changed([&](int) { EXPECT_EQ(std::this_thread::get_id(), here); });
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "INTEGER 1, INTEGER 2");
    EXPECT_EQ(device.Set({{"2.0", Int(5)}}), "noError");
    EXPECT_EQ(device.Walk("0"), "1.0 INTEGER 2, 2.0 INTEGER 5");
  });
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(held.Get(), 5);
}

TEST_F(APolledAgent, HasNoThread) {
  const std::size_t threads = Threads();
  descriptor = device.agent.Poll();
  EXPECT_EQ(Threads(), threads);
  With([&] { device.Accept(); });
  EXPECT_TRUE(device.agent.Connected());
}

TEST_F(APolledAgent, DispatchesWithoutWaiting) {
  device.agent.Dispatch();  // is not running
  descriptor = device.agent.Poll();
  for (int i = 0; i < 100; ++i) device.agent.Dispatch();
  EXPECT_FALSE(device.agent.Connected());
}

TEST_F(APolledAgent, IsQuietWhenThereIsNothingToDo) {
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    device.Sync();
  });
  device.agent.Dispatch();
  pollfd waiting{descriptor, POLLIN, 0};
  EXPECT_EQ(poll(&waiting, 1, 50), 0);
}

// The socket holds all of it; over TCP the rest comes when there is room.
TEST_F(APolledAgentAtAUnixSocket, ServesMoreThanItReadsAtOnce) {
  constexpr int kRequests = 2000;
  int asked = 0;
  snmp::Scalar scalar(module, "1", [&] { return ++asked; });
  descriptor = device.agent.Poll();
  With([&] { device.Accept(); });
  wire::Pdu get{{}, {}, wire::Get{{{Id("1.0"), false, {}}}}};
  get.header.sessionId = device.Master().Id();
  const wire::Bytes request = wire::Encode(get);
  wire::Bytes requests;
  for (int i = 0; i < kRequests; ++i) {
    requests.insert(requests.end(), request.begin(), request.end());
  }
  ASSERT_GT(requests.size(), 65536U);
  device.Master().SendBytes(requests);  // the loop stands still meanwhile
  EXPECT_TRUE(LoopUntil([&] { return asked == kRequests; }));
}

TEST_F(APolledAgent, SeesTheEndBehindTheLastMessage) {
  descriptor = device.agent.Poll();
  With([&] { device.Accept(); });
  device.Send(wire::CleanupSet{});  // has no response that could fail
  device.Lose();
  EXPECT_TRUE(LoopUntil([&] { return !device.agent.Connected(); }));
}

TEST_F(APolledAgent, ConnectsAgainByItsTimer) {
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    device.Lose();
    device.Accept();
    EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  });
}

TEST_F(APolledAgent, IsWaitedForHoweverLong) {
  descriptor = device.agent.Poll();
  std::atomic<bool> connected{false};
  std::thread waiting([&] {
    connected =
        device.agent.WaitUntilConnected(std::chrono::milliseconds::max());
  });
  With([&] { device.Accept(); });
  waiting.join();
  EXPECT_TRUE(connected);
}

TEST_F(APolledAgent, TellsItsLoopWhenAnotherThreadHasSomethingToSend) {
  snmp::Notification notification(module, "0.1");
  descriptor = device.agent.Poll();
  With([&] { device.Accept(); });
  With([&] {
    notification.Send();
    device.Master().Grant(device.Master().Next());
    EXPECT_EQ(device.Master().TakeNotifications().size(), 1U);
  });
}

TEST_F(APolledAgent, AnswersWhatAnotherThreadAnswersLater) {
  std::optional<snmp::Later<int>> reply;
  snmp::Scalar slow(module, "1",
                    [&](snmp::Later<int> later) { reply = later; });
  descriptor = device.agent.Poll();
  With([&] { device.Accept(); });
  std::uint32_t get = 0;
  With([&] { get = device.Send(wire::Get{{{Id("1.0"), false, {}}}}); });
  EXPECT_TRUE(LoopUntil([&] { return reply.has_value(); }));
  With([&] {
    reply->Answer(8);
    EXPECT_EQ(device.Receive(get), "INTEGER 8");
  });
}

TEST_F(APolledAgent, MayBeDispatchedFromItsOwnFunctions) {
  snmp::Scalar scalar(module, "1", [&] {
    device.agent.Dispatch();
    return 1;
  });
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    EXPECT_EQ(device.GetAll({"1.0", "1.0"}), "INTEGER 1, INTEGER 1");
  });
}

TEST_F(APolledAgent, RunsInOneWayAtATime) {
  descriptor = device.agent.Poll();
  EXPECT_THROW(device.agent.Poll(), std::logic_error);
  EXPECT_THROW(device.agent.Run(), std::logic_error);
  device.agent.Start();  // nothing happens
  device.agent.Stop();
  device.agent.Dispatch();
  device.Connect();
  EXPECT_THROW(device.agent.Poll(), std::logic_error);
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  device.agent.Stop();
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  });
}

TEST_F(APolledAgent, IsStoppedFromItsOwnFunctions) {
  snmp::Scalar scalar(module, "1", [&] {
    device.agent.Stop();
    return 1;
  });
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept();
    device.Send(wire::Get{{{Id("1.0"), false, {}}}});
    while (device.agent.Connected()) std::this_thread::yield();
  });
  EXPECT_FALSE(device.agent.Connected());
}

TEST_F(APolledAgent, EndsASlowSetInTime) {
  // No request comes that would wake it: its timer does.
  std::optional<snmp::Later<snmp::SetError>> kept;
  snmp::ModuleOptions hasty;
  hasty.timeout = 1s;
  snmp::Module other(device.agent, "1.3.6.1.4.1.32473.8", hasty);
  snmp::Scalar slow(other, "1", 1, snmp::ReadWrite());
  slow.Apply([&](int, int, snmp::Later<snmp::SetError> reply) {
    kept = std::move(reply);
  });
  descriptor = device.agent.Poll();
  With([&] {
    device.Accept(2);
    Phases set(device);
    EXPECT_EQ(set.Test({{".1.3.6.1.4.1.32473.8.1.0", Int(2)}}), "noError");
    EXPECT_EQ(set.Commit(), "commitFailed 1");
  });
  EXPECT_EQ(slow.Get(), 1);
}

}  // namespace
