// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SNMPSubAgent.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "NetworkInterfaces.h"
#include "adapter/AgentLibraryCheck.h"
#include "adapter/ExceptionBarrier.h"
#include "adapter/MasterExchange.h"
#include "nodes/LiveSubAgents.h"
#include "runtime/AgentEvents.h"
#include "runtime/InterruptionPoints.h"
#include "runtime/Log.h"
#include "runtime/ReconnectWorkarounds.h"
#include "runtime/ReplyTimeout.h"

namespace {

// Entries of the agent library's look-up cache. Each request compares its OID
// with all of them, and walks on from the best match. With the default of 8, a
// GET among 5,000 scalars takes half as long again; with 32, a GET among 100 is
// slower.
constexpr int kLookupCacheSize = 16;

// The TCP port of a master agent's AgentX socket (RFC 2741).
constexpr int kAgentXPort = 705;

// The longest reply timeout: in microseconds it fits in a long of 32 bits.
constexpr std::chrono::minutes kLongestReplyTimeout(30);

constexpr std::chrono::hours kLongestPingInterval(24);

// Set once the agent library is set up, and never reset. Guarded by the lock of
// NetSNMPAgentGuard, because each subagent has a mutex of its own.
bool agentInitialized = false;

std::string SocketText(const std::string& address, int port) {
  const std::string host =
      NetworkInterfaces::isLoopbackIPv4(address) ? "localhost" : address;
  return "tcp:" + host + ":" + std::to_string(port);
}

// How long an attempt to connect takes at most.
std::chrono::milliseconds AttemptTime(std::chrono::milliseconds replyTimeout,
                                      int retries) {
  return replyTimeout * (std::int64_t{retries} + 2);
}

// Requires: the agent library has its own default. The configuration file is
// read later and wins.
void ApplyPingInterval(const SNMPSubAgent& subAgent) {
  if (subAgent.pingInterval_.count() == 0) return;
  // An attempt to connect that takes longer than the interval is due again when
  // it ends, and the agent library would run nothing else.
  const auto attempt = std::chrono::duration_cast<std::chrono::seconds>(
      AttemptTime(subAgent.replyTimeout_, subAgent.replyRetries_));
  const auto interval =
      std::max(subAgent.pingInterval_, attempt + std::chrono::seconds(1));
  netsnmp_ds_set_int(NETSNMP_DS_APPLICATION_ID,
                     NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL,
                     static_cast<int>(interval.count()));
}

void SetUpAgentLibrary(SNMPSubAgent* subAgent) {
  netsnmp_ds_set_boolean(NETSNMP_DS_APPLICATION_ID, NETSNMP_DS_AGENT_ROLE, 1);
  const std::string socket =
      SocketText(subAgent->masterAddress_, subAgent->masterPort_);
  netsnmp_ds_set_string(NETSNMP_DS_APPLICATION_ID, NETSNMP_DS_AGENT_X_SOCKET,
                        socket.c_str());
  reconnect_workarounds::ConsumeAlarmNumbers();
  if (subAgent->replyTimeout_.count() != 0) {
    reply_timeout::Set(subAgent->replyTimeout_, subAgent->replyRetries_);
  }
  init_agent(subAgent->agentName_.c_str());
  ApplyPingInterval(*subAgent);
  agent_events::Subscribe(subAgent);
  // The agent library searches registrations linearly. Its cache, which only a
  // master agent turns on, remembers where the last ones were.
  netsnmp_set_lookup_cache_size(kLookupCacheSize);
  NetSNMPNode::snmpSubAgent_ = subAgent;
  init_snmp(subAgent->agentName_.c_str());
}

}  // namespace

SNMPSubAgent::SNMPSubAgent(const std::string& name)
    : SNMPSubAgent(name, NetworkInterfaces::loopbackIPv4(), kAgentXPort) {}

SNMPSubAgent::SNMPSubAgent(const std::string& name,
                           const std::string& masterAddress, int masterPort)
    : masterAddress_(masterAddress),
      masterPort_(masterPort),
      agentName_(name),
      connected_(false),
      replyTimeout_(0),
      replyRetries_(0),
      pingInterval_(0),
      wakeDescriptor_(-1) {}

SNMPSubAgent::~SNMPSubAgent() {
  {
    // From here on there is no override that an event could call.
    const NetSNMPAgentGuard guard;
    live_subagents::Remove(this);
  }
  SNMPSubAgent::Stop();
  if (wakeDescriptor_ >= 0) close(wakeDescriptor_);
}

bool SNMPSubAgent::Connected() const {
  return __atomic_load_n(&connected_, __ATOMIC_ACQUIRE);
}

int SNMPSubAgent::Start() {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  if (thread_) return 2;
  if (wakeDescriptor_ < 0) {
    // Without one, an idle thread stops at the end of its wait.
    wakeDescriptor_ = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  } else {
    // A thread that called Stop() itself has ended with it readable, and no
    // pass of the next one would wait.
    eventfd_t wakes = 0;
    eventfd_read(wakeDescriptor_, &wakes);
  }
  // Once the thread runs, nothing may fail that would lose its handle.
  boost::shared_ptr<boost::thread> thread(new boost::thread);
  *thread = boost::thread([this] { threadProc(); });
  thread_ = thread;
  return 1;
}

int SNMPSubAgent::Stop() {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  if (!thread_) return 0;
  thread_->interrupt();
  if (wakeDescriptor_ >= 0) eventfd_write(wakeDescriptor_, 1);
  try {
    thread_->join();
  } catch (const boost::thread_interrupted&) {
    // An interruption of the caller must not change the result.
  }
  // The finished thread stays: a stopped subagent is not started again.
  return 0;
}

bool SNMPSubAgent::IsRunning() const {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  return thread_ != nullptr;
}

bool SNMPSubAgent::SetReplyTimeout(std::chrono::milliseconds timeout,
                                   int retries) {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  const bool valid = timeout.count() > 0 && timeout <= kLongestReplyTimeout &&
                     retries >= 0 &&
                     AttemptTime(timeout, retries) < kLongestPingInterval;
  if (!valid || thread_) return false;
  replyTimeout_ = timeout;
  replyRetries_ = retries;
  return true;
}

bool SNMPSubAgent::SetPingInterval(std::chrono::seconds interval) {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  const bool valid = interval.count() > 0 && interval <= kLongestPingInterval;
  if (!valid || thread_) return false;
  pingInterval_ = interval;
  return true;
}

void SNMPSubAgent::initialize() {
  const boost::lock_guard<boost::mutex> lock(mutex_);
  const NetSNMPAgentGuard guard;
  if (agentInitialized) return;
  const std::string reason = WhatMakesNetSnmpUnusable();
  if (!reason.empty()) {
    LogLine("SNMPSubAgent::initialize(): " + reason);
    if (thread_) thread_->interrupt();
    return;
  }
  const SigpipeBlock sigpipeBlock;
  SetUpAgentLibrary(this);
  agentInitialized = true;
}

void SNMPSubAgent::threadProc() {
  const SigpipeBlock sigpipeBlock;
  initialize();
  try {
    exception_barrier::RaisePendingInterruption();
    const InterruptionPoints interruption;
    for (;;) {
      interruption.Pass();
      process();
    }
  } catch (const boost::thread_interrupted&) {
    // Stop(), a select() that failed, or a Net-SNMP that cannot be used.
  }
  // Stop() holds the mutex while it waits for this thread and keeps the handle;
  // a loop that ended by itself resets it, and can be started again.
  const boost::unique_lock<boost::mutex> lock(mutex_, boost::try_to_lock);
  if (lock) thread_.reset();
}
