// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <sys/select.h>

#include <cerrno>
#include <cstring>

#include "LogXMessage.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "adapter/AgentLock.h"
#include "adapter/Containment.h"
#include "adapter/SigpipeBlock.h"
#include "runtime/InterruptionPoints.h"
#include "runtime/Reconnection.h"

namespace {

// The longest wait: what a Stop() of an idle subagent may take.
constexpr timeval kLongestWait = {5, 0};

// The level of the runtime's own log lines.
constexpr unsigned int kLogLevel = 3;

// What the agent library waits for.
struct WaitSet {
  WaitSet() : timeout(kLongestWait) { FD_ZERO(&descriptors); }

  void AskAgentLibrary() {
    const NetSNMPAgentGuard guard;
    turn = AgentLockTurn();
    int block = 0;
    snmp_select_info(&count, &descriptors, &timeout, &block);
  }

  // Whether another thread used the agent library since it was asked, and may
  // have closed a descriptor. Requires: the lock.
  bool Outdated() const { return AgentLockTurn() - turn > 1; }

  int Wait() { return select(count, &descriptors, nullptr, nullptr, &timeout); }

  unsigned long turn = 0;
  int count = 0;
  fd_set descriptors;
  timeval timeout;
};

// Serves what was found readable. Where another thread used the agent library
// since it was asked, that one may have read it already or closed the
// descriptor: then this one looks again, without waiting.
void Read(WaitSet& found) {
  if (!found.Outdated()) {
    snmp_read(&found.descriptors);
    return;
  }
  WaitSet now;
  now.AskAgentLibrary();
  now.timeout = {0, 0};
  if (now.Wait() > 0) snmp_read(&now.descriptors);
}

bool IsFailure(int result, int error, const WaitSet& waitSet) {
  if (result != -1) return result < 0;
  return error != EINTR && !(error == EBADF && waitSet.Outdated());
}

std::string FailureText(int result, int error) {
  if (result == -1) {
    return std::string("Select error: ") + std::strerror(error);
  }
  return "Unknown select error [count: " + std::to_string(result) +
         "][errno: " + std::to_string(error) + "]";
}

void KeepHouse(const InterruptionPoints& interruption) {
  interruption.Pass();
  snmp_store_if_needed();
  interruption.Pass();
  run_alarms();
  interruption.Pass();
  netsnmp_check_outstanding_agent_requests();
}

}  // namespace

void SNMPSubAgent::process() {
  const SigpipeBlock sigpipeBlock;
  const InterruptionPoints interruption;
  WaitSet waitSet;
  interruption.Pass();
  waitSet.AskAgentLibrary();
  interruption.Pass();
  const int result = waitSet.Wait();
  const int error = errno;
  interruption.Pass();

  const NetSNMPAgentGuard guard;
  if (result > 0) {
    Read(waitSet);
  } else if (result == 0) {
    snmp_timeout();
  } else if (IsFailure(result, error, waitSet)) {
    LogXMessage(kLogLevel,
                "SNMPSubAgent::process(): " + FailureText(result, error));
    // Without a thread of its own the pass was called by the application, which
    // goes on as it likes.
    if (thread_) thread_->interrupt();
  }
  containment::RaisePendingInterruption();
  PutReconnectionRight();
  KeepHouse(interruption);
  containment::RaisePendingInterruption();
}
