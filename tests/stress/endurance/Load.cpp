// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An application with several threads that all use its objects.
//
//   load nodes|objects SECONDS
//
// Eight threads set values, add and remove rows, build and destroy objects and
// send notifications, while managers walk, read in bulk and set, and the master
// agent is killed and started. Nothing may be lost: in the end managers read
// exactly the objects that exist. Meant for the sanitizers.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "BusyApplication.h"
#include "BusyNodes.h"
#include "BusyObjects.h"
#include "Workers.h"
#include "testkit/MasterAgent.h"

namespace {

using Clock = std::chrono::steady_clock;

// Of these the master agent is away for one.
constexpr std::chrono::seconds kBetweenRestarts{5};

std::unique_ptr<BusyApplication> ApplicationOf(
    const std::string& kind, const testkit::MasterAgent& master) {
  if (kind == "nodes") return std::make_unique<BusyNodes>(master);
  if (kind == "objects") return std::make_unique<BusyObjects>(master);
  throw std::invalid_argument("no such kind: " + kind);
}

void RunFor(std::chrono::seconds duration, testkit::MasterAgent& master,
            BusyApplication& application) {
  const auto end = Clock::now() + duration;
  Workers workers;
  application.AddApplication(workers);
  application.AddManagers(workers);
  int restarts = 0;
  for (; Clock::now() < end; ++restarts) {
    std::this_thread::sleep_until(
        std::min(end, Clock::now() + kBetweenRestarts));
    master.Kill();
    application.MasterIsGone();
    master.Start();
    application.AwaitSession();
  }
  workers.EndAndReport();
  std::printf("%d restarts of the master agent\n", restarts);
}

}  // namespace

int main(int count, char** words) {
  if (count != 3) {
    std::fprintf(stderr, "usage: load nodes|objects SECONDS\n");
    return 2;
  }
  try {
    testkit::MasterAgent master;
    const auto application = ApplicationOf(words[1], master);
    application->Start();
    RunFor(std::chrono::seconds(std::atol(words[2])), master, *application);
    application->RequireServed();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 1;
  }
}
