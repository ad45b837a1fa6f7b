// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_BUILTINVALUE_H_
#define SNMPSUBAGENT_VALUES_BUILTINVALUE_H_

class NetSNMPNodeData;

// Whether `value` is exactly of one of the library's typed classes, not of a
// subclass, with storage of its own type: reading it has no side effects.
bool IsBuiltInValue(const NetSNMPNodeData& value);

#endif  // SNMPSUBAGENT_VALUES_BUILTINVALUE_H_
