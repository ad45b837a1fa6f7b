// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_AGENTSESSION_H_
#define SNMPSUBAGENT_RUNTIME_AGENTSESSION_H_

#include <chrono>

#include "NetSNMP.h"

class SNMPSubAgent;

// What the runtime knows about the AgentX session of this process. There is one
// at a time. Each part names the module that sets it.
//
// Guarded by the lock of NetSNMPAgentGuard.
struct AgentSession {
  // AgentEvents: the subagent whose session it is, which may have been
  // destroyed; null before the agent library is set up and after its shutdown.
  SNMPSubAgent* subAgent = nullptr;
  // AgentEvents: Net-SNMP's session while it is up; null if none is.
  netsnmp_session* open = nullptr;

  // ConnectionEvents: whether the application is being notified that the
  // session is up, and whether it was lost meanwhile.
  bool announcing = false;
  bool lostWhileAnnounced = false;

  // ReconnectWorkarounds: whether a session was lost since the last repair.
  bool repairDue = false;

  // ReconnectWorkarounds: the alarms by which Net-SNMP tries to connect again.
  struct {
    // Net-SNMP's function that makes an attempt; null until the first alarm for
    // it has been seen.
    SNMPAlarmCallback* function = nullptr;
    // The number of the alarm that Net-SNMP registers next after a loss, which
    // is one for attempts. 0 if something else may take it.
    unsigned int nextAfterLoss = 0;
    // All alarms for attempts have this number or a higher one.
    unsigned int first = 0;
  } attempts;

  // ReplyTimeout: the transport of the session, whose functions were replaced.
  struct {
    int (*send)(netsnmp_transport*, const void*, int, void**, int*) = nullptr;
    int (*receive)(netsnmp_transport*, void*, int, void**, int*) = nullptr;
    // Whether nothing has arrived since a request was sent, and since when.
    bool waiting = false;
    std::chrono::steady_clock::time_point since;
    bool givenUp = false;
  } transport;
};

inline AgentSession agentSession;

#endif  // SNMPSUBAGENT_RUNTIME_AGENTSESSION_H_
