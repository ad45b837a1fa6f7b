// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/WaitSet.h"

#include <algorithm>

#include "NetSNMPAgentGuard.h"
#include "adapter/AgentLock.h"

namespace {

// Whether the agent library's descriptors did not fit in an fd_set last time.
// If so, the large set is used at once, since Net-SNMP logs a line for each set
// that is too small. Guarded by the lock.
bool beyondSet = false;

}  // namespace

WaitSet::~WaitSet() {
  if (isLarge_) netsnmp_large_fd_set_cleanup(&large_);
}

void WaitSet::AskAgentLibrary() {
  const NetSNMPAgentGuard guard;
  turn_ = agent_lock::Turn();
  if (!beyondSet) {
    int block = 0;
    snmp_select_info(&count_, &descriptors_, &timeout_, &block);
    beyondSet = count_ > FD_SETSIZE;
  }
  if (beyondSet) AskForLargeSet();
}

void WaitSet::AskForLargeSet() {
  isLarge_ = true;
  netsnmp_large_fd_set_init(&large_, FD_SETSIZE);
  count_ = 0;
  int block = 0;
  snmp_select_info2(&count_, &large_, &timeout_, &block);
  beyondSet = count_ > FD_SETSIZE;
}

void WaitSet::WakeBy(int descriptor) {
  if (descriptor < 0) return;
  if (isLarge_) {
    netsnmp_large_fd_setfd(descriptor, &large_);
  } else if (descriptor < FD_SETSIZE) {
    FD_SET(descriptor, &descriptors_);
  } else {
    return;
  }
  count_ = std::max(count_, descriptor + 1);
}

// One hand-over since then is our own, of the guard in AskAgentLibrary().
bool WaitSet::Outdated() const { return agent_lock::Turn() - turn_ > 1; }

int WaitSet::Wait() {
  return isLarge_ ? netsnmp_large_fd_set_select(count_, &large_, nullptr,
                                                nullptr, &timeout_)
                  : select(count_, &descriptors_, nullptr, nullptr, &timeout_);
}

void WaitSet::Read() {
  if (isLarge_) {
    snmp_read2(&large_);
  } else {
    snmp_read(&descriptors_);
  }
}
