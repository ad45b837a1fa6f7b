// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Monitor.h"

#include <chrono>

#include "testing/LoopsOfThread.h"
#include "testkit/Deadlines.h"

namespace snmpsubagent::testing::internal {

bool Monitor::WaitUntil(std::unique_lock<std::mutex>& lock,
                        const std::function<bool()>& condition) {
  const auto end =
      std::chrono::steady_clock::now() + testkit::Deadlines::Session();
  LoopsOfThread& loops = LoopsOfThread::Here();
  if (loops.IsEmpty()) return changed_.wait_until(lock, end, condition);
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    lock.unlock();
    loops.Run();
    lock.lock();
    // What is readable next is not told to the condition variable.
    changed_.wait_for(lock, std::chrono::microseconds(100), condition);
  }
  return true;
}

}  // namespace snmpsubagent::testing::internal
