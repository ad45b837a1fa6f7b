// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The work of a device for a given time, with a service on each of the two
// interfaces in one process.
//
//   soak SECONDS
//
// The applications change values and rows and send notifications, a manager
// walks, sets, makes and destroys rows, and the master agent is restarted now
// and then. Every answer is compared with a model, and in the end no more
// memory, descriptors and threads may be in use than after the first tenth.
//
// Writes how it goes to stderr, and a line of numbers to stdout: those of
// Figures::Print().
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "Expectations.h"
#include "NodeService.h"
#include "ObjectService.h"
#include "Resources.h"
#include "testkit/MasterAgent.h"
#include "testkit/TrapReceiver.h"

namespace {

using Clock = std::chrono::steady_clock;

// Between two rounds. A device is mostly idle.
constexpr std::chrono::milliseconds kPause{1000};
constexpr int kRoundsPerRestart = 30;
constexpr int kRoundsPerReport = 60;

// What the process may grow by: the tables are not always of one size.
constexpr std::size_t kHeapGrowth = 128 * 1024;
constexpr std::size_t kResidentGrowth = 4 * 1024 * 1024;

struct Figures {
  std::chrono::seconds time{0};
  std::size_t rounds = 0;
  std::size_t restarts = 0;
  Work work;
  Resources before{};  // after the first tenth, or all of a short run
  Resources after{};

  void Print() const {
    std::printf("%lld %zu %zu %zu %zu %zu %zu %zu %zu %zu %zu %zu %zu %zu\n",
                static_cast<long long>(time.count()), rounds, restarts,
                work.sets, work.refused, work.created, work.destroyed,
                work.notifications, before.heap, after.heap, before.resident,
                after.resident, after.descriptors, after.threads);
  }

  void RequireNoGrowth() const {
    before.RequireNoGrowth(after, kHeapGrowth);
    Require(after.resident <= before.resident + kResidentGrowth,
            "the process grows");
  }
};

class Soak {
 public:
  Soak() {
    for (Service* const service : services_) service->Start();
  }

  Figures RunFor(std::chrono::seconds duration) {
    Figures figures;
    std::optional<Resources> before;
    const auto start = Clock::now();
    while (Clock::now() - start < duration) {
      ++figures.rounds;
      if (figures.rounds % kRoundsPerRestart == 0) {
        Restart(++figures.restarts % 2 == 0);
      }
      Round();
      if (!before && figures.restarts > 0 &&
          (Clock::now() - start) * 10 > duration) {
        before = Resources::Now();
      }
      if (figures.rounds % kRoundsPerReport == 0) Report(figures.rounds);
      std::this_thread::sleep_for(kPause);
    }
    figures.time = duration;
    for (const Service* const service : services_) {
      figures.work += service->Done();
    }
    figures.after = Resources::Now();
    figures.before = before.value_or(figures.after);
    return figures;
  }

 private:
  void Round() {
    const testkit::Manager& manager = master_.Manager();
    for (Service* const service : services_) {
      service->Change();
      service->RequireServed(manager);
      service->Set(manager);
      service->Notify();
      service->RequireServed(manager);
    }
    RequireNotified();
  }

  void RequireNotified() const {
    Work done;
    for (const Service* const service : services_) done += service->Done();
    traps_.WaitForCount(done.notifications);
    const std::vector<std::string> received = traps_.Received();
    for (const Service* const service : services_) {
      service->RequireNotified(received);
    }
  }

  // With SIGKILL or with SIGTERM.
  void Restart(bool byForce) {
    if (byForce) {
      master_.Kill();
    } else {
      master_.End();
    }
    for (Service* const service : services_) {
      service->AwaitLoss();
      if (service->KeepsNotifications()) service->Notify();
    }
    master_.Start();
    for (Service* const service : services_) service->AwaitSession();
  }

  static void Report(std::size_t rounds) {
    std::fprintf(stderr, "after %zu rounds: %s\n", rounds,
                 Resources::Now().Text().c_str());
  }

  testkit::TrapReceiver traps_;
  testkit::MasterAgent master_{traps_.SinkConfiguration()};
  NodeService nodes_{master_.AgentXPort()};
  ObjectService objects_{master_.AgentXPort()};
  const std::array<Service*, 2> services_{&nodes_, &objects_};
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: soak SECONDS\n");
    return 2;
  }
  CountMemoryExactly(words);
  try {
    const Figures figures =
        Soak().RunFor(std::chrono::seconds(std::atol(words[1])));
    figures.Print();
    figures.RequireNoGrowth();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 1;
  }
}
