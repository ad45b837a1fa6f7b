// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPAgentGuard.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "adapter/AgentLock.h"

namespace {

// A lock that is handed over in the order of asking. A plain mutex would let
// the event loop, which asks again as soon as it has let go, starve everybody.
// The loop asks twice a pass and mostly alone: it then takes no mutex.
class FairLock {
 public:
  void Take() {
    const unsigned long ticket = nextTicket_.fetch_add(1);
    if (serving_.load() == ticket) return;
    std::unique_lock<std::mutex> lock(mutex_);
    turn_.wait(lock, [&] { return serving_.load() == ticket; });
  }

  // A thread whose ticket is not seen here sees the new turn, and does not
  // wait.
  void Release() {
    const unsigned long next = serving_.load(std::memory_order_relaxed) + 1;
    serving_.store(next);
    if (nextTicket_.load() == next) return;
    const std::lock_guard<std::mutex> lock(mutex_);
    turn_.notify_all();
  }

  // Requires: the lock.
  unsigned long Turn() const {
    return serving_.load(std::memory_order_relaxed);
  }

 private:
  std::mutex mutex_;
  std::condition_variable turn_;
  std::atomic<unsigned long> nextTicket_{0};
  std::atomic<unsigned long> serving_{0};
};

// Never destroyed: the subagent thread may outlive the static objects.
FairLock& AgentLock() {
  static FairLock& lock = *new FairLock;
  return lock;
}

// How often this thread holds the lock.
thread_local unsigned int depth = 0;

}  // namespace

NetSNMPAgentGuard::NetSNMPAgentGuard() {
  if (depth == 0) AgentLock().Take();
  ++depth;
}

NetSNMPAgentGuard::~NetSNMPAgentGuard() {
  --depth;
  if (depth == 0) AgentLock().Release();
}

unsigned long AgentLockTurn() { return AgentLock().Turn(); }
