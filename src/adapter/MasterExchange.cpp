// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/MasterExchange.h"

#include <csignal>
#include <ctime>

namespace {

thread_local bool active = false;

sigset_t SigpipeSet() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  return set;
}

bool SigpipePending() {
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

SigpipeBlock::SigpipeBlock() : outermost_(!active) {
  if (!outermost_) return;
  active = true;
  const sigset_t sigpipe = SigpipeSet();
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, &sigpipe, &before);
  blockedBefore_ = sigismember(&before, SIGPIPE) == 1;
  pendingBefore_ = blockedBefore_ && SigpipePending();
}

SigpipeBlock::~SigpipeBlock() {
  if (!outermost_) return;
  active = false;
  const sigset_t sigpipe = SigpipeSet();
  if (!pendingBefore_ && SigpipePending()) {
    const timespec noWait = {0, 0};
    sigtimedwait(&sigpipe, nullptr, &noWait);
  }
  if (!blockedBefore_) pthread_sigmask(SIG_UNBLOCK, &sigpipe, nullptr);
}
