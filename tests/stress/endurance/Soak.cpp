// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <thread>

#include "Model.h"
#include "Resources.h"
#include "support/ConnectionReceiver.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testkit/MasterAgent.h"
#include "testkit/TrapReceiver.h"

// The work of a device for a given time: an application changes its values and
// rows and fires traps, a manager walks and sets, and the master agent is
// restarted now and then. Every response is compared with a model, and in the
// end no more memory, descriptors and threads may be in use than after the
// first tenth.

namespace {

using Clock = std::chrono::steady_clock;

// Between two rounds. A device is mostly idle.
constexpr std::chrono::milliseconds kPause{1000};
constexpr int kRoundsPerRestart = 30;
constexpr int kRoundsPerReport = 60;

// What the heap may grow by: the test itself remembers a little of each round.
constexpr std::size_t kHeapGrowth = 256 * 1024;
constexpr std::size_t kResidentGrowth = 4 * 1024 * 1024;

class Soak {
 public:
  Soak() {
    subAgent_.RegisterSubAgentCallback("soak", &receiver_);
    Require(subAgent_.StartAndConnect(), "does not connect");
  }
  ~Soak() { subAgent_.Stop(); }

  void RunFor(std::chrono::seconds duration) {
    const auto start = Clock::now();
    for (int round = 1; Clock::now() - start < duration; ++round) {
      if (round % kRoundsPerRestart == 0) Restart();
      Round();
      // The first tenth warms up; it has a restart at least.
      if (!before_ && restarts_ > 0 && (Clock::now() - start) * 10 > duration) {
        before_ = Resources::Now();
        std::printf("after %d rounds: %s\n", round, before_->Text().c_str());
      } else if (round % kRoundsPerReport == 0) {
        std::printf("after %d rounds: %s\n", round,
                    Resources::Now().Text().c_str());
      }
      std::fflush(stdout);
      rounds_ = round;
      std::this_thread::sleep_for(kPause);
    }
  }

  // Throws if more is in use than was after the first tenth.
  void RequireNoGrowth() const {
    const Resources now = Resources::Now();
    std::printf(
        "%d rounds with %zu traps and %d restarts of the master agent; in the "
        "end %s\n",
        rounds_, model_.Fired(), restarts_, now.Text().c_str());
    if (!before_) return;  // too short
    Require(now.heap <= before_->heap + kHeapGrowth, "the heap has grown");
    Require(now.resident <= before_->resident + kResidentGrowth,
            "the process has grown");
    Require(now.descriptors == before_->descriptors, "descriptors have leaked");
    Require(now.threads == before_->threads, "threads have leaked");
  }

 private:
  void Round() {
    model_.Change();
    model_.RequireServed(master_.Manager());
    model_.Set(master_.Manager());
    model_.Fire();
    model_.RequireServed(master_.Manager());
    traps_.WaitForCount(model_.Fired());
    model_.RequireReceived(traps_.Received());
  }

  // In order and by force in turn.
  void Restart() {
    ++restarts_;
    if (restarts_ % 2 == 0) {
      master_.Kill();
    } else {
      master_.End();
    }
    states_.insert(states_.end(), {0, 1});
    master_.Start();
    Require(subAgent_.WaitForConnections(1 + restarts_) &&
                receiver_.WaitForStates(states_),
            "does not connect again");
  }

  testkit::TrapReceiver traps_;
  testkit::MasterAgent master_{traps_.SinkConfiguration()};
  support::ConnectionReceiver receiver_;
  support::TestSubAgent subAgent_{master_.AgentXPort()};
  support::NodeRegistry registry_;
  Model model_;
  std::vector<int> states_{1};
  std::optional<Resources> before_;
  int rounds_ = 0;
  int restarts_ = 0;
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: soak SECONDS\n");
    return 2;
  }
  try {
    Soak soak;
    soak.RunFor(std::chrono::seconds(std::atol(words[1])));
    soak.RequireNoGrowth();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 1;
  }
}
