// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_
#define SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_

// The number of the turn in which the calling thread holds the lock of
// NetSNMPAgentGuard; each hand-over counts one on. A thread that finds the next
// number when it holds the lock again knows that nobody had it in between.
// Requires: the lock.
unsigned long AgentLockTurn();

#endif  // SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_
