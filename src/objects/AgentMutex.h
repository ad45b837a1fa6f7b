// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_AGENTMUTEX_H_
#define SNMPSUBAGENT_OBJECTS_AGENTMUTEX_H_

#include <mutex>
#include <thread>

namespace snmpsubagent::detail {

// A recursive mutex that can tell how often the calling thread holds it.
class AgentMutex {
 public:
  void lock() {
    mutex_.lock();
    ++depth_;
  }
  bool try_lock() {
    if (!mutex_.try_lock()) return false;
    ++depth_;
    return true;
  }
  void unlock() {
    --depth_;
    mutex_.unlock();
  }

  // Requires: the calling thread holds it.
  int Depth() const { return depth_; }

 private:
  std::recursive_mutex mutex_;
  int depth_ = 0;  // guarded by mutex_
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_AGENTMUTEX_H_
