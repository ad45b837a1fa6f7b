// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cerrno>
#include <cstring>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "adapter/Deferred.h"
#include "adapter/ExceptionBarrier.h"
#include "adapter/MasterExchange.h"
#include "runtime/InterruptionPoints.h"
#include "runtime/Log.h"
#include "runtime/ReconnectWorkarounds.h"
#include "runtime/WaitSet.h"

namespace {

// The longest wait of a pass, and so the longest time that a Stop() of an idle
// subagent takes without a descriptor to wake it by.
constexpr timeval kLongestWait = {5, 0};

// Reads what was found readable. If another thread has used the agent library
// since it was asked for its descriptors, that thread may have read already or
// closed one: then they are asked for and looked at again, without waiting.
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
  WaitSet waitSet(kLongestWait);
  interruption.Pass();
  waitSet.AskAgentLibrary();
  waitSet.WakeBy(wakeDescriptor_);
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
    LogLine("SNMPSubAgent::process(): " + FailureText(result, error));
    // Without a subagent thread the application has called process(), and may
    // continue.
    if (thread_) thread_->interrupt();
  }
  deferred::Run();
  exception_barrier::RaisePendingInterruption();
  reconnect_workarounds::RepairAfterLoss();
  RunHousekeeping(interruption);
  exception_barrier::RaisePendingInterruption();
}
