// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_AGENTSETUP_H_
#define SNMPSUBAGENT_ADAPTER_AGENTSETUP_H_

namespace agent_setup {

// Sets what NetSNMP::shutdown_snmp_agent() calls before it shuts the agent
// library down. Requires: the lock of NetSNMPAgentGuard.
void SetBeforeShutdown(void (*function)());

}  // namespace agent_setup

#endif  // SNMPSUBAGENT_ADAPTER_AGENTSETUP_H_
