// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_TABLELOOKUP_H_
#define SNMPSUBAGENT_TABLES_TABLELOOKUP_H_

#include <string>

class NetSNMPTableNode;

// The iterator table of that name, or null. A name that the registry lacks is
// entered, with a null node. Requires: a registry.
NetSNMPTableNode* FindTable(const std::string& name);

#endif  // SNMPSUBAGENT_TABLES_TABLELOOKUP_H_
