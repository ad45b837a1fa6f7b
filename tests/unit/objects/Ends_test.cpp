// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Agents that are stopped or destroyed while they call the application: in its
// functions, and in the one that takes their log.
#include <gtest/gtest.h>
#include <poll.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using snmp::SetError;

// An agent that may go at any time, and the master agent's part on a thread.
struct Service {
  explicit Service(snmp::AgentOptions options = Device::Options()) {
    if (options.master == snmp::AgentOptions().master) {
      options.master = listener.Address();
    }
    options.log = [this](snmp::LogLevel, const std::string& line) {
      if (line.find(cue) != std::string::npos) agent->Stop();
    };
    agent = std::make_unique<snmp::Agent>("service", options);
  }
  ~Service() {
    if (master.joinable()) master.join();
  }

  // Takes a session and grants all until it ends.
  void Accept() {
    master = std::thread([this] {
      try {
        wire::MasterSession session(listener.Accept(60s), 60s);
        session.ServeUntil([] { return false; });
      } catch (const wire::NoSubAgent&) {
      }
    });
  }

  // The loop of the application, until then.
  void LoopUntil(const std::function<bool()>& done) {
    EXPECT_TRUE(Eventually([&] {
      if (done()) return true;
      pollfd waiting{descriptor, POLLIN, 0};
      if (poll(&waiting, 1, 10) > 0 && agent) agent->Dispatch();
      return done();
    }));
  }

  wire::Listener listener;
  std::string cue = "nothing says this";  // the line at which it is stopped
  std::unique_ptr<snmp::Agent> agent;
  int descriptor = -1;
  std::thread master;
};

TEST(AnAgentThatRuns, MayBeDestroyedByItsOwnFunction) {
  Service service;
  service.agent->OnSession(
      [&](const snmp::SessionEvent&) { service.agent.reset(); });
  service.Accept();
  service.agent->Run();
  EXPECT_FALSE(service.agent);
}

TEST(AnAgentThatIsDispatched, MayBeDestroyedByItsOwnFunction) {
  Service service;
  service.agent->OnSession(
      [&](const snmp::SessionEvent&) { service.agent.reset(); });
  service.Accept();
  service.descriptor = service.agent->Poll();
  service.LoopUntil([&] { return !service.agent; });
}

TEST(AnAgentThatIsStopped, MayBeDestroyedByTheFunctionThatIsToldOfIt) {
  Service service;
  service.agent->OnSession([&](const snmp::SessionEvent& event) {
    if (!event.connected) service.agent.reset();
  });
  service.Accept();
  service.descriptor = service.agent->Poll();
  service.LoopUntil([&] { return service.agent->Connected(); });
  service.agent->Stop();
  EXPECT_FALSE(service.agent);
}

TEST(AnAgentThatIsDestroyed, IsNotStartedAgainByTheFunctionThatIsToldOfIt) {
  Service service;
  snmp::Agent& agent = *service.agent;
  agent.OnSession([&](const snmp::SessionEvent& event) {
    if (event.connected) return;
    agent.Start();
    EXPECT_THROW(agent.Run(), std::logic_error);
    EXPECT_THROW(agent.Poll(), std::logic_error);
  });
  const std::weak_ptr<snmp::detail::AgentState> state = agent.State();
  service.Accept();
  agent.Start();
  EXPECT_TRUE(agent.WaitUntilConnected(60s));
  service.agent.reset();
  EXPECT_TRUE(state.expired());
}

TEST(AnAgentThatIsDispatched, MayBeStoppedByItsLogWhileANameIsLookedUp) {
  snmp::AgentOptions options = Device::Options();
  options.master = "tcp:nowhere.invalid:705";
  Service service(options);
  service.cue = "is not known";
  service.agent->Poll();
  service.agent->Dispatch();
  EXPECT_TRUE(Eventually([&] {
    // Throws as long as it runs, and else starts it.
    try {
      return service.agent->Poll() >= 0;
    } catch (const std::logic_error&) {
      return false;
    }
  }));
}

// The connection that was given up is not to come up again beside the new one.
TEST(AnAgentThatIsDispatched,
     MayBeStartedAnewWhileItFindsThatItsSessionIsLost) {
  Service service;
  snmp::AgentOptions options = Device::Options();
  options.master = "tcp:localhost:" + std::to_string(service.listener.Port());
  service.agent = std::make_unique<snmp::Agent>("service", options);
  snmp::Agent& agent = *service.agent;
  snmp::Module module(agent, kBase);
  snmp::Notification notification(module, "0.1");
  service.descriptor = agent.Poll();
  std::unique_ptr<wire::MasterSession> session;
  const auto accept = [&] {
    std::atomic<bool> done{false};
    std::thread master([&] {
      session = std::make_unique<wire::MasterSession>(
          service.listener.Accept(60s), 60s);
      EXPECT_NO_THROW(session->ServeUntil(
          [&] { return session->Registered().size() == 1; }));
      done = true;
    });
    service.LoopUntil([&] { return done && module.IsRegistered(); });
    master.join();
  };
  accept();
  bool lost = false;
  agent.OnSession([&](const snmp::SessionEvent& event) {
    if (event.connected || lost) return;
    lost = true;
    agent.Stop();
    service.descriptor = agent.Poll();
  });
  session->Reset();
  EXPECT_TRUE(Eventually([&] {
    notification.Send();  // what finds it
    return lost;
  }));
  accept();
}

TEST(AnAgentThatRuns, MayBeStoppedByItsLogWhenASetIsNotAnsweredInTime) {
  snmp::AgentOptions options = Device::Options();
  options.timeout = 1s;
  Service service(options);
  service.cue = "not answered in time";
  snmp::Module module(*service.agent, kBase);
  std::optional<snmp::Later<SetError>> kept;
  snmp::Scalar slow(module, "1", 1, snmp::ReadWrite());
  slow.Apply([&](int, int, const snmp::Later<SetError>& reply) {
    kept.emplace(reply);
  });
  service.agent->Start();
  wire::MasterSession session(service.listener.Accept(60s), 60s);
  session.ServeUntil([&] { return session.Registered().size() == 1; });
  const auto set = session.NewTransaction();
  session.Ask(wire::TestSet{{{Id("1.0"), Int(2)}}}, set);
  session.Send(wire::CommitSet{}, set);
  EXPECT_THROW(session.Receive(), wire::NoSubAgent);
  EXPECT_EQ(slow.Get(), 1);
}

TEST(AnAgentThatRuns, IsNotConnectedOnceItsLogHasStoppedIt) {
  Service service;
  service.cue = "connected to";
  std::atomic<bool> connected{false};
  std::atomic<int> events{0};
  service.agent->OnSession([&](const snmp::SessionEvent& event) {
    connected = event.connected;
    ++events;
  });
  service.Accept();
  service.agent->Start();
  EXPECT_TRUE(Eventually([&] { return events > 0; }));
  const auto lock = service.agent->Lock();
  EXPECT_FALSE(connected);
}

// What is called behind Stop() fails the test.
class AfterStop : public testing::Test {
 protected:
  // For a function that stops the agent, and for one that is not called then.
  void Stop() {
    device.agent.Stop();
    stopped = true;
  }
  void NotStopped() { EXPECT_FALSE(stopped); }

  void WaitUntilStopped() {
    EXPECT_TRUE(Eventually([&] { return stopped.load(); }));
    const auto lock = device.agent.Lock();  // all is over
  }

  std::atomic<bool> stopped{false};
  Device device;
  snmp::Module module{device.agent, kBase};
};

TEST_F(AfterStop, NoOtherCheckIsAsked) {
  snmp::Scalar first(module, "1", 1, snmp::ReadWrite());
  snmp::Scalar second(module, "2", 1, snmp::ReadWrite());
  first.Check([&](int, int) {
    Stop();
    return true;
  });
  second.Check([&](int, int) {
    NotStopped();
    return true;
  });
  module.Check([&](const snmp::SetChange&) {
    NotStopped();
    return SetError::None;
  });
  device.Connect();
  Phases(device).SendTest({{"1.0", Int(2)}, {"2.0", Int(2)}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoOtherValueIsStaged) {
  snmp::Scalar first(module, "1",
                     snmp::GetSet([&] { return Stop(), 1; }, [](int) {}),
                     snmp::ReadWrite());
  snmp::Scalar second(module, "2",
                      snmp::GetSet([&] { return NotStopped(), 1; }, [](int) {}),
                      snmp::ReadWrite());
  device.Connect();
  Phases(device).SendTest({{"1.0", Int(2)}, {"2.0", Int(2)}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoOtherScalarIsRead) {
  snmp::Scalar first(module, "1", [&]() -> std::optional<int> {
    Stop();
    return std::nullopt;
  });
  snmp::Scalar second(module, "2", [&] { return NotStopped(), 1; });
  device.Connect();
  device.Send(wire::GetNext{{After("0")}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoOtherCellIsRead) {
  struct Row {};
  snmp::Table<int, Row> table(module, "1");
  const auto read = [&](int key, const Row&) -> std::optional<int> {
    NotStopped();
    if (key == 1) Stop();
    return std::nullopt;
  };
  table.Column(2, read).Column(3, read);
  table.Insert(1, {});
  table.Insert(2, {});
  device.Connect();
  device.Send(wire::GetNext{{After("0")}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoCellIsReadOfARowThatWasLoaded) {
  struct Row {};
  snmp::Table<int, Row> table(module, "1");
  table
      .Column(2,
              [&](int, const Row&) {
                NotStopped();
                return 1;
              })
      .Load(
          [&](auto& rows) {
            rows[1] = {};
            Stop();
          },
          std::chrono::seconds(0));
  device.Connect();
  device.Send(wire::GetNext{{After("0")}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoRowIsAskedForAgain) {
  struct Row {
    int value = 1;
  };
  snmp::Table<int, Row> table(module, "1");
  table.Column(2, &Row::value, snmp::ReadWrite())
      .Virtual(
          [&](int) {
            NotStopped();
            Stop();
            return Row();
          },
          [](const int*) { return std::optional<int>(); });
  device.Connect();
  Phases(device).SendTest({{"1.1.2.1", Int(2)}});
  WaitUntilStopped();
}

TEST_F(AfterStop, NoOutcomeOfANotificationIsTold) {
  snmp::Notification notification(module, "0.1");
  std::atomic<int> outcomes{0};
  device.agent.OnSession([&](const snmp::SessionEvent& event) {
    if (!event.connected) Stop();
  });
  device.Connect();
  for (int i = 0; i < 3; ++i) {
    notification.Send({}, [&](const snmp::NotificationResult& result) {
      NotStopped();
      EXPECT_EQ(result.outcome, snmp::NotificationResult::Unanswered);
      ++outcomes;
    });
  }
  device.Lose();
  WaitUntilStopped();
  EXPECT_EQ(outcomes, 3);
}

// Its answer would never come.
TEST_F(AfterStop, NoApplyIsWaitedFor) {
  snmp::Scalar slow(module, "1", 1, snmp::ReadWrite());
  std::vector<snmp::Later<SetError>> kept;
  slow.Apply([&](int, int, const snmp::Later<SetError>& reply) {
    NotStopped();
    kept.push_back(reply);
    Stop();
  });
  device.Connect();
  Phases set(device);
  EXPECT_EQ(set.Test({{"1.0", Int(2)}}), "noError");
  set.SendCommit();
  WaitUntilStopped();
  EXPECT_EQ(slow.Get(), 1);
  stopped = false;
  device.Connect();
  EXPECT_EQ(Phases(device).Test({{"1.0", Int(3)}}), "noError");
}

}  // namespace
