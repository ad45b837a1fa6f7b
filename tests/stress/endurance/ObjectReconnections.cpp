// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent of the objects' library, with default options, that loses its master
// agent again and again.
//
//   object_reconnections KIND COUNT
//
// What happens COUNT times, by KIND:
//   restarts  the master agent is away for up to half a second
//   losses    the connection alone ends
//   snmpd     snmpd is killed and started again
// The master agent is one of the tests' own, or snmpd. Each time every object
// must be served again. Memory, descriptors and threads must not grow. Prints
// how long it took.
#include <snmpsubagent.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "QuietOptions.h"
#include "Resources.h"
#include "Times.h"
#include "testkit/Deadlines.h"
#include "testkit/MasterAgent.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Master.h"

namespace snmp = snmpsubagent;
namespace agentx = testkit::agentx;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kModules = 5;
constexpr std::size_t kScalars = 20;  // of each
constexpr char kAll[] = "1.3.6.1.4.1.32473.9";

// A master agent that goes and comes back.
class Fate {
 public:
  virtual ~Fate() = default;
  virtual int Port() const = 0;
  virtual void Go() = 0;
  virtual bool IsAway() const { return true; }
  virtual void Return() = 0;
  // Waits until the session is there and all is registered; returns how many
  // objects are served then.
  virtual std::size_t AwaitService() = 0;
};

class TestMaster : public Fate {
 public:
  explicit TestMaster(bool goes) : goes_(goes) {}

  int Port() const override { return master_.Port(); }
  void Go() override {
    if (goes_) master_.Refuse();
    session_.reset();
  }
  bool IsAway() const override { return goes_; }
  void Return() override {
    if (goes_) master_.Listen();
  }
  std::size_t AwaitService() override {
    session_ = master_.AcceptServing(kModules);
    return agentx::Walk(*session_, {{1, 3, 6, 1, 4, 1, 32473, 9}}).size();
  }

 private:
  const bool goes_;
  agentx::Master master_;
  agentx::Master::Session session_;
};

class Snmpd : public Fate {
 public:
  int Port() const override { return master_.AgentXPort(); }
  void Go() override { master_.Kill(); }
  void Return() override { master_.Start(); }
  std::size_t AwaitService() override {
    std::size_t count = 0;
    testkit::WaitFor(
        [&] {
          count = master_.Manager().Objects(kAll).size();
          return count == kModules * kScalars;
        },
        testkit::Deadlines::Session());
    return count;
  }

 private:
  testkit::MasterAgent master_;
};

std::unique_ptr<Fate> FateOf(const std::string& kind) {
  if (kind == "restarts") return std::make_unique<TestMaster>(true);
  if (kind == "losses") return std::make_unique<TestMaster>(false);
  if (kind == "snmpd") return std::make_unique<Snmpd>();
  throw std::invalid_argument("no such kind: " + kind);
}

class Reconnections {
 public:
  explicit Reconnections(Fate& fate)
      : fate_(fate), agent_("endurance", QuietOptions(fate.Port())) {
    for (std::size_t m = 1; m <= kModules; ++m) {
      modules_.emplace_back(agent_, kAll + ("." + std::to_string(m)));
      for (std::size_t s = 1; s <= kScalars; ++s) {
        scalars_.emplace_back(modules_.back(), std::to_string(s),
                              static_cast<int>(s));
      }
    }
    agent_.Start();
    Await();
  }

  void Repeat(int count) {
    // What is allocated once is there by then.
    const int first = count / 10 + 3;
    times_.Reserve(static_cast<std::size_t>(first + count));
    for (int cycle = 0; cycle < first; ++cycle) Once();
    const Resources before = AtRest();
    for (int cycle = 0; cycle < count; ++cycle) Once();
    const Resources after = AtRest();

    std::printf("%d times; milliseconds from the master agent's return\n",
                count);
    Times::PrintHead();
    times_.Print("until all is served");
    std::cout << "before: " << before.Text() << "\nafter:  " << after.Text()
              << "\n";
    before.RequireNoGrowth(after, kLeeway);
  }

 private:
  static constexpr std::size_t kLeeway = 4000;

  Resources AtRest() const {
    const snmp::AgentLock lock = agent_.Lock();
    return Resources::Now();
  }

  void Await() {
    if (fate_.AwaitService() != scalars_.size()) {
      throw std::runtime_error("not all objects are served");
    }
  }

  void Once() {
    fate_.Go();
    if (fate_.IsAway()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 500));
    }
    fate_.Return();
    const Clock::time_point back = Clock::now();
    Await();
    times_.Add(Clock::now() - back);
  }

  Fate& fate_;
  snmp::Agent agent_;
  std::vector<snmp::Module> modules_;
  std::vector<snmp::Scalar<int>> scalars_;
  std::minstd_rand random_;
  Times times_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || std::atoi(argv[2]) < 1) {
    std::cerr << "usage: object_reconnections restarts|losses|snmpd COUNT\n";
    return 2;
  }
  CountMemoryExactly(argv);
  try {
    const std::unique_ptr<Fate> fate = FateOf(argv[1]);
    Reconnections(*fate).Repeat(std::atoi(argv[2]));
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << "\n";
    return 1;
  }
}
