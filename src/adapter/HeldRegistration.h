// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_HELDREGISTRATION_H_
#define SNMPSUBAGENT_ADAPTER_HELDREGISTRATION_H_

struct netsnmp_handler_registration_s;

// Whether the agent library still holds `registration`, made for that OID of
// `oidLen` sub-identifiers. It does not once it was shut down, which frees all
// of them; the address is compared and never followed.
bool AgentHolds(const netsnmp_handler_registration_s* registration,
                const unsigned long* oid, unsigned int oidLen);

#endif  // SNMPSUBAGENT_ADAPTER_HELDREGISTRATION_H_
