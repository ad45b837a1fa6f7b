// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPAgentGuard.h"

#include <condition_variable>
#include <mutex>

#include "adapter/AgentLock.h"

namespace {

// A lock that is handed over in the order of asking. A plain mutex would let
// the event loop, which asks again as soon as it has let go, starve everybody.
class FairLock {
 public:
  void Take() {
    std::unique_lock<std::mutex> lock(mutex_);
    const unsigned long ticket = nextTicket_++;
    turn_.wait(lock, [&] { return serving_ == ticket; });
  }

  void Release() {
    const std::lock_guard<std::mutex> lock(mutex_);
    ++serving_;
    if (serving_ != nextTicket_) turn_.notify_all();
  }

  // Only the holder counts it on, so the holder reads it without the mutex.
  unsigned long Turn() const { return serving_; }

 private:
  std::mutex mutex_;
  std::condition_variable turn_;
  unsigned long nextTicket_ = 0;
  unsigned long serving_ = 0;
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
