// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_REGISTRATION_H_
#define SNMPSUBAGENT_ADAPTER_REGISTRATION_H_

struct netsnmp_handler_registration_s;

namespace registration {

// Whether `registration`, made for that OID of `oidLen` sub-identifiers, is
// still registered with the agent library. It is not after a shutdown, which
// frees all registrations; the address is compared and never followed.
bool IsRegistered(const netsnmp_handler_registration_s* registration,
                  const unsigned long* oid, unsigned int oidLen);

}  // namespace registration

#endif  // SNMPSUBAGENT_ADAPTER_REGISTRATION_H_
