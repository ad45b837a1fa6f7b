// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENTEXPORT_H_
#define SNMPSUBAGENT_SNMPSUBAGENTEXPORT_H_

// Marks what applications may use. The library is compiled with everything else
// hidden, so a class or function without it cannot be linked from outside.
#define SNMPSUBAGENT_EXPORT __attribute__((visibility("default")))

#endif  // SNMPSUBAGENT_SNMPSUBAGENTEXPORT_H_
