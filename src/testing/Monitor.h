// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_MONITOR_H_
#define SNMPSUBAGENT_TESTING_MONITOR_H_

#include <condition_variable>
#include <functional>
#include <mutex>

namespace snmpsubagent::testing::internal {

// A lock, and waiting for what another thread changes under it. A thread that
// has loops (see Loop) runs them meanwhile.
//
// Threads: any.
class Monitor {
 public:
  std::unique_lock<std::mutex> Lock() { return std::unique_lock(mutex_); }

  // To be called, with the lock, when something has changed.
  void Changed() { changed_.notify_all(); }

  // Waits until `condition`, which is called with the lock; returns whether it
  // was true in time. The lock is released meanwhile.
  bool WaitUntil(std::unique_lock<std::mutex>& lock,
                 const std::function<bool()>& condition);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_MONITOR_H_
