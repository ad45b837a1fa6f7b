// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent that runs out of memory on its way from the start to the session in
// which all is registered.
#include <gtest/gtest.h>
#include <poll.h>
#include <snmpsubagent.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "FailingNew.h"
#include "PatientOptions.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

namespace snmp = snmpsubagent;
namespace wire = testkit::agentx;

namespace {

using namespace std::chrono_literals;

constexpr char kLongText[] = "a text that is too long to lie inline";

// Does the master agent's part on a thread of its own, whose allocations do not
// fail: it takes one connection after the other, and grants what is asked for.
class Master {
 public:
  Master() : thread_([this] { Run(); }) {}
  ~Master() {
    ended_ = true;
    thread_.join();
  }

  int Port() const { return listener_.Port(); }

  // Whether a session has all registrations and answers for both scalars.
  bool ServesAll() const { return servesAll_; }

  // Ends the connection, and takes the next one.
  void Disconnect() {
    servesAll_ = false;
    lose_ = true;
  }

 private:
  void Run() {
    const SparedThread spared;
    while (!ended_) {
      try {
        Serve(wire::MasterSession(listener_.Accept(20ms), 60s));
      } catch (const std::runtime_error&) {
        // There was none, or it has gone.
      }
    }
  }

  void Serve(wire::MasterSession session) {
    session.ServeUntil([&] { return session.Registered().size() == 2; });
    while (!ended_ && !lose_) {
      // A Get without memory is answered with genErr.
      if (!servesAll_) {
        servesAll_ = IsServed(session, 1) && IsServed(session, 2);
      }
      std::this_thread::sleep_for(1ms);
    }
    lose_ = false;
  }

  static bool IsServed(wire::MasterSession& session, std::uint32_t module) {
    const wire::Oid name{1, 3, 6, 1, 4, 1, 32473, module, 1, 0};
    const auto response = session.Ask(wire::Get{{{name, false, {}}}});
    return response.varbinds.size() == 1 &&
           response.varbinds[0].value.type == wire::Type::kOctetString;
  }

  wire::Listener listener_;
  std::atomic<bool> ended_{false};
  std::atomic<bool> lose_{false};
  std::atomic<bool> servesAll_{false};
  std::thread thread_;
};

// An agent with all that is asked of a master agent at the begin of a session:
// two registrations, capabilities, and a notification that waits.
class Device {
 public:
  explicit Device(const std::string& host = "127.0.0.1")
      : agent_(kLongText, PatientOptions("tcp:" + host + ":" +
                                         std::to_string(master.Port()))),
        one_(agent_, "1.3.6.1.4.1.32473.1"),
        two_(agent_, "1.3.6.1.4.1.32473.2"),
        first_(one_, "1", kLongText),
        second_(two_, "1", kLongText),
        notification_(one_, "0.1") {
    agent_.OnSession([this](const snmp::SessionEvent& event) {
      sessions_ += event.connected ? 1 : -1;
    });
    agent_.AddCapability("1.3.6.1.4.1.32473.3", kLongText);
    notification_.Send(
        {first_}, [this](const snmp::NotificationResult&) { ++outcomes_; });
  }

  void Poll() { descriptor_ = agent_.Poll(); }

  // Runs the agent on this thread until then.
  void RunUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!done() && std::chrono::steady_clock::now() < end) {
      pollfd waiting{descriptor_, POLLIN, 0};
      poll(&waiting, 1, 1);
      if (waiting.revents != 0) agent_.Dispatch();
    }
  }
  void RunUntilAllIsServed() {
    RunUntil([this] { return master.ServesAll(); });
  }

  void Start() { agent_.Start(); }
  void Stop() { agent_.Stop(); }
  void WaitUntilAllIsServed() {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!master.ServesAll() && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(1ms);
    }
  }

  void ExpectAllIsWell() {
    EXPECT_TRUE(master.ServesAll());
    EXPECT_TRUE(agent_.Connected());
    EXPECT_EQ(sessions_, 1);
    agent_.Stop();
    EXPECT_EQ(sessions_, 0);
    EXPECT_EQ(outcomes_, 1);
  }

  Master master;

 private:
  std::atomic<int> sessions_{0};
  std::atomic<int> outcomes_{0};
  snmp::Agent agent_;
  snmp::Module one_;
  snmp::Module two_;
  snmp::Scalar<std::string> first_;
  snmp::Scalar<std::string> second_;
  snmp::Notification notification_;
  int descriptor_ = -1;
};

TEST(AnAgent, ConnectsWhicheverAllocationFailsInItsEventLoop) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    bool polled = false;
    fail([&] {
      device.Poll();
      polled = true;
      device.RunUntilAllIsServed();
    });
    if (!polled) device.Poll();
    device.RunUntilAllIsServed();
    device.ExpectAllIsWell();
  });
}

TEST(AnAgent, ConnectsAgainWhicheverAllocationFails) {
  WithEachAllocationFailing([](const auto& fail) {
    Device device;
    device.Poll();
    device.RunUntilAllIsServed();
    device.master.Disconnect();
    EXPECT_TRUE(fail([&] { device.RunUntilAllIsServed(); }));
    device.ExpectAllIsWell();
  });
}

TEST(AnAgent, ConnectsToANameWhicheverAllocationFails) {
  WithEachAllocationFailing(
      [](const auto& fail) {
        Device device("localhost");
        device.Poll();
        EXPECT_TRUE(fail([&] { device.RunUntilAllIsServed(); }));
        device.ExpectAllIsWell();
      },
      Failing::AllThreads);
}

TEST(AnAgent, ConnectsWhicheverAllocationFailsOnItsThread) {
  WithEachAllocationFailing(
      [](const auto& fail) {
        Device device;
        bool started = false;
        fail([&] {
          device.Start();
          started = true;
          device.WaitUntilAllIsServed();
        });
        if (!started) device.Start();
        device.WaitUntilAllIsServed();
        device.ExpectAllIsWell();
      },
      Failing::AllThreads);
}

}  // namespace
