// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cerrno>
#include <cstring>

#include "LogXMessage.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "adapter/Containment.h"
#include "adapter/Deferred.h"
#include "adapter/SigpipeBlock.h"
#include "runtime/InterruptionPoints.h"
#include "runtime/ReconnectWorkarounds.h"
#include "runtime/WaitSet.h"

namespace {

// The longest wait: what a Stop() of an idle subagent may take at most.
constexpr timeval kLongestWait = {5, 0};

// The longest wait of a pass that follows one in which something was read.
// Requests come close together, and an answer takes several passes: the
// descriptor of Stop() would cost each of them a hundredth. It is left out of
// such a wait, which is too short for a Stop() to miss it.
constexpr timeval kWaitAfterRead = {0, 20000};

thread_local bool readLastTime = false;

// The level of the runtime's own log lines.
constexpr unsigned int kLogLevel = 3;

// Serves what was found readable. Where another thread used the agent library
// since it was asked, that one may have read it already or closed the
// descriptor: then this one looks again, without waiting.
void Read(WaitSet& found) {
  if (!found.Outdated()) {
    found.Read();
    return;
  }
  WaitSet now(kLongestWait);
  now.AskAgentLibrary();
  now.DoNotWait();
  if (now.Wait() > 0) now.Read();
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

void RunHousekeeping(const InterruptionPoints& interruption) {
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
  WaitSet waitSet(readLastTime ? kWaitAfterRead : kLongestWait);
  interruption.Pass();
  waitSet.AskAgentLibrary();
  if (!readLastTime) waitSet.WakeBy(wakeDescriptor_);
  interruption.Pass();
  const int result = waitSet.Wait();
  const int error = errno;
  interruption.Pass();

  const NetSNMPAgentGuard guard;
  readLastTime = result > 0;
  if (readLastTime) {
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
  deferred::Run();
  containment::RaisePendingInterruption();
  reconnect_workarounds::RepairAfterLoss();
  RunHousekeeping(interruption);
  containment::RaisePendingInterruption();
}
