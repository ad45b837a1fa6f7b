// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_CONNECTTIMEOUT_H_
#define SNMPSUBAGENT_RUNTIME_CONNECTTIMEOUT_H_

#include <sys/time.h>

// Limits the time that connecting to the master agent takes.
//
// Net-SNMP would wait as long as the system does, which is minutes: for a host
// that is gone, and for a master agent that hangs, once the connections that it
// never accepted fill its queue.
//
// Only the AgentX socket is concerned. Without effect when the process has used
// Net-SNMP before: of two transports of one name the first is taken.
// Requires: the lock of NetSNMPAgentGuard.
namespace connect_timeout {

void Set(const timeval& timeout);

}  // namespace connect_timeout

#endif  // SNMPSUBAGENT_RUNTIME_CONNECTTIMEOUT_H_
