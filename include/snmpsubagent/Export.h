// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_EXPORT_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_EXPORT_H_

// Marks what libsnmpsubagent-objects.so offers; all else in it is hidden.
#define SNMPSUBAGENT_OBJECTS_EXPORT __attribute__((visibility("default")))

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_EXPORT_H_
