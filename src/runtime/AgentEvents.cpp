// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/AgentEvents.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "SNMPSubAgent.h"
#include "adapter/AgentSetup.h"
#include "adapter/Deferred.h"
#include "adapter/InUse.h"
#include "nodes/LiveSubAgents.h"
#include "runtime/AgentSession.h"
#include "runtime/ReconnectWorkarounds.h"
#include "runtime/ReplyTimeout.h"

namespace {

// Whether an event with the number of a session start is one. Net-SNMP 5.10
// raises another one with that number, whose argument is a session that is
// about to be freed. Code other than Net-SNMP's may raise it without a session.
bool IsSessionStart(void* session) {
  return session == nullptr ||
         snmp_sess_pointer(static_cast<netsnmp_session*>(session)) != nullptr;
}

int BeforeSessionStart(int, int, void* session, void*) {
  if (!IsSessionStart(session)) return 0;
  agentSession.open = static_cast<netsnmp_session*>(session);
  reconnect_workarounds::SessionStarted();
  return 0;
}

int AnnounceSessionStart(int major, int minor, void* session, void*) {
  if (!IsSessionStart(session)) return 0;
  return SNMPSubAgent::snmp_subagent_callback(major, minor, session,
                                              agentSession.subAgent);
}

int AnnounceSessionStop(int major, int minor, void* session, void*) {
  return SNMPSubAgent::snmp_subagent_callback(major, minor, session,
                                              agentSession.subAgent);
}

int AfterSessionStop(int, int, void*, void*) {
  agentSession.open = nullptr;
  in_use::ForgetSets();
  reconnect_workarounds::SessionLost();
  return 0;
}

const netsnmp_handler_registration* RegistrationOf(void* parameters) {
  return static_cast<const register_parameters*>(parameters)->reginfo;
}

int BeforeRegistration(int, int, void* parameters, void*) {
  in_use::BeginRegistering(RegistrationOf(parameters));
  return 0;
}

int AfterRegistration(int, int, void* parameters, void*) {
  reconnect_workarounds::RegistrationRequested();
  in_use::EndRegistering(RegistrationOf(parameters));
  return 0;
}

int OnSessionInit(int, int, void* session, void*) {
  reply_timeout::ApplyTo(static_cast<netsnmp_session*>(session));
  return 0;
}

int OnShutdown(int, int, void*, void*) {
  const NetSNMPAgentGuard guard;
  agent_events::Detach();
  deferred::Drop();
  return 0;
}

// The receivers of one event run in the order of their priorities: the highest
// before the agent library's own and the application's, the lowest after them.
constexpr struct {
  int major;
  int minor;
  int priority;
  SNMPCallback* receiver;
} kSubscriptions[] = {
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_START,
     NETSNMP_CALLBACK_HIGHEST_PRIORITY, BeforeSessionStart},
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_START,
     NETSNMP_CALLBACK_DEFAULT_PRIORITY, AnnounceSessionStart},
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_STOP,
     NETSNMP_CALLBACK_DEFAULT_PRIORITY, AnnounceSessionStop},
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_STOP,
     NETSNMP_CALLBACK_LOWEST_PRIORITY, AfterSessionStop},
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_REGISTER_OID,
     NETSNMP_CALLBACK_HIGHEST_PRIORITY, BeforeRegistration},
    // Between these two the agent library asks the master agent for the
    // registration, and waits for the response.
    {SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_REGISTER_OID,
     NETSNMP_CALLBACK_LOWEST_PRIORITY, AfterRegistration},
    {SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_SESSION_INIT,
     NETSNMP_CALLBACK_DEFAULT_PRIORITY, OnSessionInit},
    {SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_SHUTDOWN,
     NETSNMP_CALLBACK_DEFAULT_PRIORITY, OnShutdown},
};

}  // namespace

void agent_events::Subscribe(SNMPSubAgent* subAgent) {
  agentSession.subAgent = subAgent;
  agent_setup::SetBeforeShutdown(Detach);
  for (const auto& subscription : kSubscriptions) {
    netsnmp_register_callback(subscription.major, subscription.minor,
                              subscription.receiver, nullptr,
                              subscription.priority);
  }
}

void agent_events::Detach() {
  agentSession.subAgent = nullptr;
  if (!live_subagents::Contains(NetSNMPNode::snmpSubAgent_)) return;
  auto* const subAgent =
      dynamic_cast<SNMPSubAgent*>(NetSNMPNode::snmpSubAgent_);
  if (subAgent != nullptr) {
    __atomic_store_n(&subAgent->connected_, false, __ATOMIC_RELEASE);
  }
}
