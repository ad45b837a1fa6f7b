// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Clock.h"

#include <atomic>

namespace snmpsubagent::detail {
namespace {

std::atomic<TestClock*> testClock{nullptr};

}  // namespace

TestClock::~TestClock() = default;

Time Now() noexcept {
  const TestClock* const clock = testClock;
  return clock == nullptr ? std::chrono::steady_clock::now() : clock->Now();
}

void SetTestClock(TestClock* clock) noexcept { testClock = clock; }

bool ScheduledByTest(int timer, std::optional<Time> time) {
  TestClock* const clock = testClock;
  if (clock != nullptr) clock->Schedule(timer, time);
  return clock != nullptr;
}

}  // namespace snmpsubagent::detail
