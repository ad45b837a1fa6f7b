// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ABI_VIRTUALTABLE_H_
#define SNMPSUBAGENT_TESTS_ABI_VIRTUALTABLE_H_

#include <string>
#include <vector>

// The operations in the virtual table of a class that the library exports, slot
// by slot, as the dynamic linker has filled it in; empty if there is no such
// table. It needs no debug information.
//
// Whose they are is left out, since a class may override what it inherits:
// "RegisterNode()", "~" for each of the two slots of a destructor, "pure" for
// an operation without a body. Those that are reached through a further base
// follow as "thunk to RegisterNode()".
std::vector<std::string> VirtualTable(const std::string& className);

#endif  // SNMPSUBAGENT_TESTS_ABI_VIRTUALTABLE_H_
