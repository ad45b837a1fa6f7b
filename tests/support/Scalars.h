// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SCALARS_H_
#define SNMPSUBAGENT_TESTS_SCALARS_H_

#include <string>

#include "NetSNMPDataNode.h"

namespace support {

// The OID of the scalar instance `number` of the tests, as the tools print it.
std::string ScalarOid(unsigned long number);

// The OID under which all scalars of the tests stand.
std::string ScalarsOid();

// Builds the scalar instance `number` with a clone of `value`; the registry
// owns it.
NetSNMPDataNode* AddScalar(unsigned long number, const std::string& name,
                           const NetSNMPNodeData& value,
                           void (*callback)(NetSNMPDataNode*) = nullptr);

// Builds a read-only integer scalar that holds `value` itself.
NetSNMPDataNode* AddIntScalar(unsigned long number, const std::string& name,
                              int value);

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_SCALARS_H_
