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
#include "adapter/ExceptionBarrier.h"
#include "nodes/LiveSubAgents.h"
#include "runtime/AgentSession.h"
#include "runtime/ReplyTimeout.h"

namespace {

// Exceptions of the application go to the agent library's log: a receiver has
// no node to log on.
void LogToAgentLibrary(const std::string& what) {
  snmp_log(LOG_ERR, "SNMPSubAgent: %s\n", what.c_str());
}

template <typename Body>
void CallApplication(const Body& body) {
  exception_barrier::Run(body, LogToAgentLibrary);
}

void SetConnected(SNMPSubAgent* subAgent, bool connected) {
  __atomic_store_n(&subAgent->connected_, connected, __ATOMIC_RELEASE);
}

// Responses are small, and TCP would delay each until the one before is
// acknowledged; a master agent with several outstanding requests would wait.
void SendAtOnce(void* session) {
  // Null if the event was not raised by Net-SNMP.
  netsnmp_transport* const transport = snmp_sess_transport(
      snmp_sess_pointer(static_cast<netsnmp_session*>(session)));
  if (transport == nullptr) return;
  const int on = 1;
  setsockopt(transport->sock, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
}

void OnSessionStart(SNMPSubAgent* subAgent, void* session) {
  SendAtOnce(session);
  reply_timeout::Enforce(static_cast<netsnmp_session*>(session));
  SetConnected(subAgent, true);
  agentSession.announcing = true;
  CallApplication([&] { subAgent->OnSubAgentConnected(); });
  CallApplication([&] { subAgent->NotifySubAgentCallbacks(1); });
  agentSession.announcing = false;
  if (!std::exchange(agentSession.lostWhileAnnounced, false)) return;
  CallApplication([&] { subAgent->NotifySubAgentCallbacks(0); });
}

// The session may be lost again while the application registers its nodes. The
// receivers, which do not know of it yet, then get first 1 and then 0.
void OnSessionStop(SNMPSubAgent* subAgent) {
  if (agentSession.announcing) {
    agentSession.lostWhileAnnounced = true;
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
  if (!live_subagents::Contains(subAgent)) return 0;
  if (minorID == SNMPD_CALLBACK_INDEX_START) {
    OnSessionStart(subAgent, serverArg);
  } else if (minorID == SNMPD_CALLBACK_INDEX_STOP) {
    OnSessionStop(subAgent);
  }
  return 0;
}
