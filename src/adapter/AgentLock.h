// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_
#define SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_

namespace agent_lock {

// How often the lock of NetSNMPAgentGuard has been released for good so far. A
// thread that reads the number, releases the lock, and reads the next number
// when it has the lock again, knows that no other thread had it in between.
// Requires: the lock.
unsigned long Turn();

}  // namespace agent_lock

#endif  // SNMPSUBAGENT_ADAPTER_AGENTLOCK_H_
