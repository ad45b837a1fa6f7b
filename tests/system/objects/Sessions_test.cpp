// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Sessions with real master agents: transports, Stop() and Start(), several
// agents, master agents that do not answer, refused registrations.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Served.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/WaitFor.h"

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::Deadlines;
using testkit::MasterAgent;
using testkit::ScratchDirectory;

namespace {

const std::string kName = Served::Name("1");

// An agent with one scalar, 7.
struct Subagent {
  explicit Subagent(const snmp::AgentOptions& options)
      : agent("the tests", options) {}
  bool ShowsAt(const MasterAgent& master) const {
    return WaitUntilRegistered(module) &&
           ShownAt(master.Manager(), kName) == "INTEGER: 7";
  }

  snmp::Agent agent;
  snmp::Module module{agent, Served::kSubtree};
  snmp::Scalar<int> scalar{module, "1", 7};
};

TEST(ASession, IsServedOverAUnixSocket) {
  const ScratchDirectory directory;
  const std::string address = "unix:" + (directory.Path() / "x").string();
  const MasterAgent master("agentXSocket " + address + "\n");
  Subagent subagent(OptionsFor(address));
  subagent.agent.Start();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(ASession, IsServedOverTcp) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  subagent.agent.Start();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(ASession, IsServedByAMasterAgentThatIsNamed) {
  const MasterAgent master;
  Subagent subagent(
      OptionsFor("tcp:localhost:" + std::to_string(master.AgentXPort())));
  subagent.agent.Start();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(ASession, IsServedOverTcpOfIpVersion6) {
  const testkit::LoopbackPort port;
  const std::string address = "tcp6:[::1]:" + std::to_string(port.Number());
  const MasterAgent master("agentXSocket " + address + "\n");
  Subagent subagent(OptionsFor(address));
  subagent.agent.Start();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(Stop, EndsTheSessionSoThatManagersGetNoSuchObjectAtOnce) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  for (int i = 0; i < 3; ++i) {
    subagent.agent.Start();
    ASSERT_TRUE(subagent.ShowsAt(master));
    subagent.agent.Stop();
    EXPECT_FALSE(subagent.agent.Connected());
    EXPECT_THAT(ShownAt(master.Manager(), kName), HasSubstr("No Such Object"));
  }
}

TEST(Stop, MayComeAtAnyMomentOfASession) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  for (int microseconds = 0; microseconds < 4000; microseconds += 40) {
    subagent.agent.Start();
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    subagent.agent.Stop();
  }
  subagent.agent.Start();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

// Stops and starts the agent whenever that event comes, for the first times.
class Restarts {
 public:
  explicit Restarts(Subagent& subagent, bool connected) : subagent_(subagent) {
    subagent.agent.OnSession(
        [this, connected](const snmp::SessionEvent& event) {
          if (event.connected != connected || count_ == 3) return;
          ++count_;
          subagent_.agent.Stop();
          subagent_.agent.Start();
        });
  }
  int Count() const { return count_; }

 private:
  Subagent& subagent_;
  std::atomic<int> count_{0};
};

TEST(AnAgent, IsStoppedAndStartedByTheFunctionThatIsToldOfItsSession) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  const Restarts restarts(subagent, true);
  subagent.agent.Start();
  EXPECT_TRUE(testkit::WaitFor([&] { return restarts.Count() == 3; },
                               Deadlines::Session()));
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(AnAgent, IsStartedByTheFunctionThatIsToldOfItsStop) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  std::atomic<bool> again{true};
  subagent.agent.OnSession([&](const snmp::SessionEvent& event) {
    if (!event.connected && again.exchange(false)) subagent.agent.Start();
  });
  subagent.agent.Start();
  ASSERT_TRUE(subagent.ShowsAt(master));
  subagent.agent.Stop();
  EXPECT_TRUE(subagent.ShowsAt(master));
}

TEST(AnAgent, IsStoppedAndStartedWithinASet) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  snmp::Scalar written(subagent.module, "2", 1, snmp::ReadWrite());
  written.Apply([&](int) {
    subagent.agent.Stop();
    subagent.agent.Start();
  });
  subagent.agent.Start();
  ASSERT_TRUE(subagent.ShowsAt(master));
  EXPECT_NE(SetAt(master.Manager(), {Served::Name("2"), "i", "2"}), "None");
  EXPECT_TRUE(subagent.ShowsAt(master));
  EXPECT_EQ(written.Get(), 1);
}

TEST(ThreeAgents, HaveThreeMasterAgents) {
  std::vector<std::unique_ptr<MasterAgent>> masters;
  std::vector<std::unique_ptr<Subagent>> subagents;
  for (int i = 0; i < 3; ++i) {
    masters.push_back(std::make_unique<MasterAgent>());
    subagents.push_back(
        std::make_unique<Subagent>(OptionsFor(AddressOf(*masters.back()))));
    subagents.back()->scalar.Set(i);
    subagents.back()->agent.Start();
  }
  for (std::size_t i = 0; i < 3; ++i) {
    ASSERT_TRUE(WaitUntilRegistered(subagents[i]->module));
    EXPECT_EQ(ShownAt(masters[i]->Manager(), kName),
              "INTEGER: " + std::to_string(i));
  }
  masters[1]->Freeze();
  EXPECT_EQ(ShownAt(masters[2]->Manager(), kName), "INTEGER: 2");
  masters[1]->Thaw();
}

double ThreadMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 +
         static_cast<double>(time.tv_nsec) / 1e6;
}

// The longest of several calls.
class Longest {
 public:
  template <typename Call>
  void Time(const Call& call) {
    const auto begin = std::chrono::steady_clock::now();
    const double work = ThreadMilliseconds();
    call();
    time_ = std::max(time_, std::chrono::steady_clock::now() - begin);
    work_ = std::max(work_, ThreadMilliseconds() - work);
  }
  std::chrono::steady_clock::duration Value() const { return time_; }
  void Print() const {
    std::printf("longest call: %.3f ms, most work in one: %.3f ms\n",
                std::chrono::duration<double, std::milli>(time_).count(),
                work_);
  }

 private:
  std::chrono::steady_clock::duration time_{};
  double work_ = 0;  // processor time in milliseconds
};

// That of an application's thread, while it does all that a service does.
std::chrono::steady_clock::duration LongestCall(
    const snmp::AgentOptions& options, int subtrees) {
  Longest longest;
  snmp::Agent agent("the tests", options);
  longest.Time([&] { agent.Start(); });
  std::vector<std::unique_ptr<snmp::Module>> modules;
  for (int i = 1; i <= subtrees; ++i) {
    longest.Time([&] {
      modules.push_back(std::make_unique<snmp::Module>(
          agent, Served::kSubtree + ("." + std::to_string(i))));
    });
  }
  snmp::Scalar scalar(*modules.front(), "1", 7);
  snmp::Notification notification(*modules.front(), "0.1");
  for (int i = 0; i < 1000; ++i) {
    longest.Time([&] { scalar.Set(i); });
    longest.Time([&] { notification.Send({scalar}); });
    longest.Time([&] { static_cast<void>(agent.Connected()); });
  }
  while (!modules.empty()) {
    longest.Time([&] { modules.pop_back(); });
  }
  for (int i = 0; i < 2; ++i) {
    longest.Time([&] { agent.Stop(); });
    longest.Time([&] { agent.Start(); });
  }
  longest.Print();
  return longest.Value();
}

// Far less than any time for which one of them waits for the master agent.
constexpr milliseconds kNoWait{2000};

TEST(NoThreadOfTheApplications, WaitsForAMasterAgentThatIsNotThere) {
  const testkit::LoopbackPort port;
  EXPECT_LT(LongestCall(OptionsFor(AddressOf(port.Number())), 100), kNoWait);
}

TEST(NoThreadOfTheApplications, WaitsForAMasterAgentThatIsStopped) {
  const MasterAgent master;
  master.Freeze();
  EXPECT_LT(LongestCall(OptionsFor(AddressOf(master)), 100), kNoWait);
  master.Thaw();
}

TEST(NoThreadOfTheApplications, WaitsForAMasterAgentThatStopsWithinASession) {
  const MasterAgent master;
  Subagent subagent(OptionsFor(AddressOf(master)));
  subagent.agent.Start();
  ASSERT_TRUE(subagent.ShowsAt(master));
  master.Freeze();
  snmp::Notification notification(subagent.module, "0.1");
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < 20000; ++i) notification.Send({subagent.scalar});
  subagent.scalar.Set(1);
  subagent.agent.Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, Deadlines::Pass());
  master.Thaw();
}

TEST(NoThreadOfTheApplications, WaitsForAnAddressThatDropsPackets) {
  // Its queue of connections is full: the system drops what comes.
  const testkit::FileDescriptor listener(
      socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const name = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(bind(listener.Number(), name, size), 0);
  ASSERT_EQ(listen(listener.Number(), 0), 0);
  ASSERT_EQ(getsockname(listener.Number(), name, &size), 0);
  std::vector<testkit::FileDescriptor> waiting;
  for (int i = 0; i < 4; ++i) {
    waiting.emplace_back(
        socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    connect(waiting.back().Number(), name, size);
  }
  Lines log;
  snmp::AgentOptions options =
      OptionsFor(AddressOf(ntohs(address.sin_port)), &log);
  EXPECT_LT(LongestCall(options, 100), kNoWait);

  options.responseTimeout = milliseconds(300);
  Subagent subagent(options);
  subagent.agent.Start();
  EXPECT_TRUE(log.WaitFor("timed out"));
}

TEST(NoThreadOfTheApplications, WaitsForANameThatDoesNotResolve) {
  Lines log;
  EXPECT_LT(LongestCall(OptionsFor("tcp:nowhere.invalid:705", &log), 100),
            kNoWait);
  Subagent subagent(OptionsFor("tcp:nowhere.invalid:705", &log));
  subagent.agent.Start();
  EXPECT_TRUE(log.WaitFor("nowhere.invalid is not known"));
}

TEST(NoThreadOfTheApplications, WaitsFor5000SubtreesToBeRegistered) {
  const MasterAgent master;
  EXPECT_LT(LongestCall(OptionsFor(AddressOf(master)), 5000), kNoWait);
}

TEST(FiveThousandSubtrees, AreRegisteredWhileManagersAreServed) {
  Served served;
  const snmp::Scalar scalar(served.module, "1", 7);
  served.Start();
  std::vector<std::unique_ptr<snmp::Module>> modules;
  for (int i = 1; i <= 5000; ++i) {
    modules.push_back(std::make_unique<snmp::Module>(
        served.agent, "1.3.6.1.4.1.32473.10." + std::to_string(i)));
  }
  EXPECT_EQ(served.Shown("1"), "INTEGER: 7");
  EXPECT_TRUE(testkit::WaitFor([&] { return modules.back()->IsRegistered(); },
                               Deadlines::Load()));
  EXPECT_THAT(served.agent.Refusals(), IsEmpty());
}

TEST(ARefusedRegistration, IsToldAndTakenWhenTheOwnerHasLeft) {
  const MasterAgent master;
  Subagent owner(OptionsFor(AddressOf(master)));
  owner.agent.Start();
  ASSERT_TRUE(owner.ShowsAt(master));

  Lines log;
  Lines refusals;
  Subagent other(OptionsFor(AddressOf(master), &log));
  other.scalar.Set(8);
  other.agent.OnRefusal([&](const snmp::Refusal& refusal) {
    refusals.Add(ToString(refusal.subtree) + " " + refusal.reason);
  });
  other.agent.Start();
  const std::string expected =
      Served::kSubtree + std::string(" duplicateRegistration");
  ASSERT_TRUE(refusals.WaitFor(expected));
  EXPECT_TRUE(log.WaitFor(std::string(Served::kSubtree) +
                          ": the master agent refuses to register"));
  EXPECT_FALSE(other.module.IsRegistered());
  ASSERT_EQ(other.agent.Refusals().size(), 1U);
  EXPECT_EQ(ToString(other.agent.Refusals()[0].subtree), Served::kSubtree);
  EXPECT_EQ(other.agent.Refusals()[0].reason, "duplicateRegistration");

  owner.agent.Stop();
  ASSERT_TRUE(WaitUntilRegistered(other.module));
  EXPECT_THAT(other.agent.Refusals(), IsEmpty());
  EXPECT_EQ(ShownAt(master.Manager(), kName), "INTEGER: 8");
}

TEST(AnAgentWithoutALogFunction, WritesNothingToStderr) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  {
    MasterAgent master;
    snmp::AgentOptions options = OptionsFor(AddressOf(master));
    options.log = nullptr;
    Subagent owner(options);
    Subagent refused(options);
    snmp::Scalar throwing(owner.module, "2", []() -> int {
      throw std::runtime_error("a sensor is gone");
    });
    owner.agent.Start();
    EXPECT_TRUE(owner.ShowsAt(master));
    refused.agent.Start();
    EXPECT_TRUE(
        testkit::WaitFor([&] { return !refused.agent.Refusals().empty(); },
                         Deadlines::Session()));
    EXPECT_THAT(master.Manager().Get(Served::Name("2")).error,
                HasSubstr("genError"));
    master.Kill();
    EXPECT_TRUE(testkit::WaitFor([&] { return !owner.agent.Connected(); },
                                 Deadlines::Session()));
    master.Start();
    EXPECT_TRUE(owner.agent.WaitUntilConnected(Deadlines::Session()));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(AnAgent, SaysWhatToDoAboutASocketThatItMayNotUse) {
  const ScratchDirectory directory;
  Lines log;
  Subagent missing(
      OptionsFor("unix:" + (directory.Path() / "x").string(), &log));
  missing.agent.Start();
  EXPECT_TRUE(log.WaitFor(
      "No such file or directory; is snmpd running, with \"master agentx\""));
}

TEST(ModulesInManyContexts, AreServedInEachAlone) {
  const MasterAgent master(
      "com2sec -Cn rooms rooms 127.0.0.1 public2\n"
      "group readers v2c rooms\n"
      "view all included .1\n"
      "access readers \"\" any noauth prefix all none none\n");
  Subagent subagent(OptionsFor(AddressOf(master)));
  snmp::ModuleOptions options;
  options.context = "rooms";
  snmp::Module rooms(subagent.agent, Served::kSubtree, options);
  const snmp::Scalar scalar(rooms, "1", 8);
  subagent.agent.Start();
  ASSERT_TRUE(WaitUntilRegistered(rooms));
  EXPECT_TRUE(subagent.ShowsAt(master));
}

}  // namespace
