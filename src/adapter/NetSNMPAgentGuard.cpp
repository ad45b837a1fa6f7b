// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPAgentGuard.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "adapter/AgentLock.h"

namespace {

// A fair recursive lock: threads get it in the order of their requests. With a
// plain mutex the event loop, which requests it again right after releasing it,
// would starve all others. Without contention it takes no mutex.
class FairLock {
 public:
  void Take() {
    const std::thread::id self = std::this_thread::get_id();
    if (holder_.load(std::memory_order_relaxed) != self) {
      TakeTurn();
      holder_.store(self, std::memory_order_relaxed);
    }
    ++depth_;
  }

  void Release() {
    if (--depth_ > 0) return;
    holder_.store(std::thread::id(), std::memory_order_relaxed);
    PassTurnOn();
  }

  // Requires: the lock.
  unsigned long Turn() const {
    return serving_.load(std::memory_order_relaxed);
  }

 private:
  void TakeTurn() {
    const unsigned long ticket = nextTicket_.fetch_add(1);
    if (serving_.load() == ticket) return;
    std::unique_lock<std::mutex> lock(mutex_);
    turn_.wait(lock, [&] { return serving_.load() == ticket; });
  }

  // A thread whose ticket is not visible here sees the new turn, and does not
  // wait.
  void PassTurnOn() {
    const unsigned long next = serving_.load(std::memory_order_relaxed) + 1;
    serving_.store(next);
    if (nextTicket_.load() == next) return;
    const std::lock_guard<std::mutex> lock(mutex_);
    turn_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable turn_;
  std::atomic<unsigned long> nextTicket_{0};
  std::atomic<unsigned long> serving_{0};
  // The thread that has the lock, or none. A count per thread would cost a
  // look-up of thread-local storage for every guard.
  std::atomic<std::thread::id> holder_{};
  unsigned int depth_ = 0;  // how often the holder has it
};

// Never destroyed: the subagent thread may outlive the static objects.
FairLock& TheLock() {
  static FairLock& lock = *new FairLock;
  return lock;
}

}  // namespace

NetSNMPAgentGuard::NetSNMPAgentGuard() { TheLock().Take(); }

NetSNMPAgentGuard::~NetSNMPAgentGuard() { TheLock().Release(); }

unsigned long agent_lock::Turn() { return TheLock().Turn(); }
