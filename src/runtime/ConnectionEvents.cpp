// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <exception>
#include <utility>

#include "ISNMPSubAgentCallback.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "adapter/Containment.h"
#include "runtime/LivingSubAgents.h"
#include "runtime/MasterPatience.h"

namespace {

// The agent library's log takes what the application throws: a receiver has no
// node to log on.
void LogToAgentLibrary(const std::string& what) {
  snmp_log(LOG_ERR, "SNMPSubAgent: %s\n", what.c_str());
}

template <typename Body>
void CallApplication(const Body& body) {
  containment::Contain(body, LogToAgentLibrary);
}

void SetConnected(SNMPSubAgent* subAgent, bool connected) {
  __atomic_store_n(&subAgent->connected_, connected, __ATOMIC_RELEASE);
}

// Answers are small, and a master agent that has several requests under way
// would wait for each while TCP waits for more to send.
void SendAtOnce(void* session) {
  // Null when another than the agent library raises the event.
  netsnmp_transport* const transport = snmp_sess_transport(
      snmp_sess_pointer(static_cast<netsnmp_session*>(session)));
  if (transport == nullptr) return;
  const int on = 1;
  setsockopt(transport->sock, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
}

// Whether a session is just being announced, and was lost meanwhile. Guarded by
// the lock of NetSNMPAgentGuard.
bool announcing = false;
bool lostMeanwhile = false;

void OnSessionStart(SNMPSubAgent* subAgent, void* session) {
  SendAtOnce(session);
  master_patience::Watch(static_cast<netsnmp_session*>(session));
  SetConnected(subAgent, true);
  announcing = true;
  CallApplication([&] { subAgent->OnSubAgentConnected(); });
  CallApplication([&] { subAgent->NotifySubAgentCallbacks(1); });
  announcing = false;
  if (!std::exchange(lostMeanwhile, false)) return;
  CallApplication([&] { subAgent->NotifySubAgentCallbacks(0); });
}

// While the application registers its nodes the session may be lost already.
// The receivers, who know nothing of it yet, are told of it and of its loss in
// that order.
void OnSessionStop(SNMPSubAgent* subAgent) {
  if (announcing) {
    lostMeanwhile = true;
  } else if (subAgent->Connected()) {
    CallApplication([&] { subAgent->NotifySubAgentCallbacks(0); });
  }
  SetConnected(subAgent, false);
}

}  // namespace

void SNMPSubAgent::RegisterSubAgentCallback(const std::string& callbackName,
                                            ISNMPSubAgentCallback* callback) {
  callbacks_.emplace(callbackName, callback);
}

void SNMPSubAgent::UnregisterSubAgentCallback(const std::string& callbackName) {
  callbacks_.erase(callbackName);
}

void SNMPSubAgent::NotifySubAgentCallbacks(int state) {
  std::exception_ptr first;
  for (const auto& receiver : callbacks_) {
    if (receiver.second == nullptr) continue;
    try {
      receiver.second->SubAgentStateChanged(state);
    } catch (...) {
      if (first == nullptr) first = std::current_exception();
    }
  }
  if (first != nullptr) std::rethrow_exception(first);
}

int SNMPSubAgent::snmp_subagent_callback(int /*majorID*/, int minorID,
                                         void* serverArg, void* clientArg) {
  const NetSNMPAgentGuard guard;
  auto* const subAgent = static_cast<SNMPSubAgent*>(clientArg);
  if (!LivingSubAgents::Contains(subAgent)) return 0;
  if (minorID == SNMPD_CALLBACK_INDEX_START) {
    OnSessionStart(subAgent, serverArg);
  } else if (minorID == SNMPD_CALLBACK_INDEX_STOP) {
    OnSessionStop(subAgent);
  }
  return 0;
}
