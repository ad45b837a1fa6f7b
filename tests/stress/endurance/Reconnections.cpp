// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A subagent that loses its master agent again and again.
//
//   reconnections KIND COUNT
//
// What happens COUNT times, by KIND:
//   restarts  the master agent is away for a part of a ping interval
//   losses    the connection alone ends
//   both      restarts and losses in turn
//   snmpd     snmpd is killed and started again
// The master agent is one of the tests' own, or snmpd. Each time every object
// must be served again, and the receivers must get 0 and 1 in turn. Memory,
// descriptors and threads must not grow. Prints how long it took.
#include <unistd.h>

#include <algorithm>
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

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "Resources.h"
#include "Times.h"
#include "support/Device.h"
#include "testkit/Deadlines.h"
#include "testkit/MasterAgent.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Master.h"

using testkit::Deadlines;
using testkit::WaitFor;
using testkit::agentx::Master;

namespace {

using Clock = std::chrono::steady_clock;

void Require(bool truth, const std::string& what) {
  if (!truth) throw std::runtime_error(what);
}

// A master agent that goes and comes back.
class Fate {
 public:
  virtual ~Fate() = default;
  virtual int Port() const = 0;
  virtual void Go() = 0;
  // From here on it takes connections.
  virtual void Return() = 0;
  // Waits until all objects are served. Returns when the subagent came.
  virtual Clock::time_point AwaitService(const Device& device) = 0;
};

class FakeMaster : public Fate {
 public:
  // The connection alone ends each time, the master agent goes each time, or
  // the one and the other.
  enum class Loss { kConnection, kMaster, kEither };
  explicit FakeMaster(Loss loss) : loss_(loss) {}

  int Port() const override { return master_.Port(); }
  void Go() override {
    away_ = loss_ == Loss::kMaster || (loss_ == Loss::kEither && !away_);
    if (away_) master_.Refuse();
    session_.reset();
  }
  void Return() override {
    if (away_) master_.Listen();
  }
  Clock::time_point AwaitService(const Device& device) override {
    session_ = master_.Accept();
    const Clock::time_point arrival = Clock::now();
    session_->ServeUntil([this] {
      return session_->Registered().size() == Device::Subtrees().size();
    });
    Require(Walk(*session_, Device::Subtrees()) == device.Objects(),
            "not all objects are served");
    return arrival;
  }

 private:
  const Loss loss_;
  bool away_ = false;
  Master master_;
  Master::Session session_;
};

class Snmpd : public Fate {
 public:
  int Port() const override { return master_.AgentXPort(); }
  void Go() override { master_.Kill(); }
  void Return() override { master_.Start(); }
  Clock::time_point AwaitService(const Device& device) override {
    Require(WaitFor([&] { return device.IsConnected(); }, Deadlines::Session()),
            "the subagent does not come back");
    const Clock::time_point arrival = Clock::now();
    const auto served = [&] {
      return master_.Manager().Objects(".1.3.6.1.4.1.32473").size() ==
             device.Objects().size();
    };
    Require(WaitFor(served, Deadlines::Session()),
            "not all objects are served");
    return arrival;
  }

 private:
  testkit::MasterAgent master_;
};

std::unique_ptr<Fate> FateOf(const std::string& kind) {
  using Loss = FakeMaster::Loss;
  if (kind == "restarts") return std::make_unique<FakeMaster>(Loss::kMaster);
  if (kind == "losses") return std::make_unique<FakeMaster>(Loss::kConnection);
  if (kind == "both") return std::make_unique<FakeMaster>(Loss::kEither);
  if (kind == "snmpd") return std::make_unique<Snmpd>();
  throw std::invalid_argument("no such kind: " + kind);
}

class Reconnections {
 public:
  explicit Reconnections(Fate& fate)
      : fate_(fate), device_(fate.Port(), support::kEagerSubAgent) {
    device_.Start();
    fate_.AwaitService(device_);
    // The agent library has a line for every change.
    const NetSNMPAgentGuard guard;
    snmp_disable_log();
    netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
  }

  ~Reconnections() { fate_.Go(); }

  void Repeat(int count) {
    // What is allocated once is there by then.
    const int first = count / 10 + 3;
    Reserve(static_cast<std::size_t>(first + count));
    for (int cycle = 0; cycle < first; ++cycle) Once();
    const Resources before = AtRest();
    for (int cycle = 0; cycle < count; ++cycle) Once();
    const Resources after = AtRest();

    std::printf("%d times; milliseconds from the master agent's return\n",
                count);
    Times::PrintHead();
    untilArrival_.Print("until the subagent comes");
    untilServed_.Print("until all is served");
    service_.Print("from the one to the other");
    std::cout << "before: " << before.Text() << "\nafter:  " << after.Text()
              << "\n";
    RequireNoGrowth(before, after, count);
  }

 private:
  // While the subagent reads, the agent library has a buffer of 64 KiB.
  static Resources AtRest() {
    const NetSNMPAgentGuard guard;
    return Resources::Now();
  }

  void Once() {
    fate_.Go();
    states_.push_back(0);
    Require(device_.Receiver().WaitForStates(states_),
            "the receivers are not told of the loss");
    // It returns at any moment of a ping interval, which is a second.
    std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 1000));
    fate_.Return();
    const Clock::time_point back = Clock::now();
    const Clock::time_point arrival = fate_.AwaitService(device_);
    const Clock::time_point served = Clock::now();
    states_.push_back(1);
    Require(device_.Receiver().WaitForStates(states_),
            "the receivers are not told of the session");
    untilArrival_.Add(arrival - back);
    untilServed_.Add(served - back);
    service_.Add(served - arrival);
  }

  // What a cycle adds to this program's own lists is there from the start.
  void Reserve(std::size_t cycles) {
    states_.reserve(2 * cycles + 1);
    for (Times* const times : {&untilArrival_, &untilServed_, &service_}) {
      times->Reserve(cycles);
    }
  }

  // The receiver of the device keeps 2 states of each cycle, in a list that may
  // be twice as long as it needs to be. The least that a cycle can lose is 32
  // bytes.
  static void RequireNoGrowth(const Resources& before, const Resources& after,
                              int count) {
    constexpr std::size_t kOwnPerCycle = 2 * 2 * sizeof(int);
    constexpr std::size_t kLeeway = 4000;
    const auto cycles = static_cast<std::size_t>(count);
    before.RequireNoGrowth(after, kOwnPerCycle * cycles + kLeeway);
  }

  Fate& fate_;
  Device device_;
  std::minstd_rand random_;
  std::vector<int> states_{1};
  Times untilArrival_;
  Times untilServed_;
  Times service_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || std::atoi(argv[2]) < 1) {
    std::cerr << "usage: reconnections restarts|losses|both|snmpd COUNT\n";
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
