// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Workers.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <utility>

#include "Expectations.h"

namespace {

// No application takes the lock in a busy loop.
constexpr std::chrono::milliseconds kPause{1};

}  // namespace

Workers::~Workers() { End(); }

void Workers::Add(const std::string& name, std::function<void()> work) {
  Worker& worker = workers_.emplace_back();
  worker.name = name;
  worker.thread = std::thread([this, &worker, work = std::move(work)] {
    try {
      for (; !ending_; ++worker.rounds) {
        work();
        std::this_thread::sleep_for(kPause);
      }
    } catch (const std::exception& error) {
      worker.error = error.what();
    }
  });
}

void Workers::EndAndReport() {
  End();
  for (const Worker& worker : workers_) {
    std::printf("%s: %ld rounds\n", worker.name.c_str(), worker.rounds);
    Require(worker.error.empty(), worker.name + ": " + worker.error);
  }
}

void Workers::End() {
  ending_ = true;
  for (Worker& worker : workers_) {
    if (worker.thread.joinable()) worker.thread.join();
  }
}
