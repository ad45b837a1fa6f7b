// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_BOUNDEDCONNECT_H_
#define SNMPSUBAGENT_RUNTIME_BOUNDEDCONNECT_H_

#include <sys/time.h>

// Has the agent library connect to the master agent within `timeout`.
//
// It would wait as long as the system does, which is minutes: for a host that
// is gone, and for a master agent that hangs, once the connections that it
// never accepted fill its queue.
//
// Only the AgentX socket is concerned. Without effect when the process has used
// Net-SNMP before: of two transports of one name the first is taken.
// Requires: the lock of NetSNMPAgentGuard.
void BoundConnecting(const timeval& timeout);

#endif  // SNMPSUBAGENT_RUNTIME_BOUNDEDCONNECT_H_
