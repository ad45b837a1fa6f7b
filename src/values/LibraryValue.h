// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_LIBRARYVALUE_H_
#define SNMPSUBAGENT_VALUES_LIBRARYVALUE_H_

class NetSNMPNodeData;

// Whether `value` is of one of the typed classes themselves, with storage of
// its own type. Reading such a value does nothing else; a subclass of the
// application's may do anything, down to deleting the value.
bool IsLibraryValue(const NetSNMPNodeData& value);

#endif  // SNMPSUBAGENT_VALUES_LIBRARYVALUE_H_
