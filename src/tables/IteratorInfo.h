// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ITERATORINFO_H_
#define SNMPSUBAGENT_TABLES_ITERATORINFO_H_

#include <string>

class NetSNMPTableEntryNode;
struct netsnmp_iterator_info_s;

// What the agent library's table iterator has to know of the table whose rows
// are in `entry`: the hooks, the types of the indexes, the columns. The hooks
// find the table by `tableName`, which is borrowed. Null if there are no
// indexes or there is no memory.
netsnmp_iterator_info_s* NewIteratorInfo(const NetSNMPTableEntryNode& entry,
                                         std::string* tableName);

#endif  // SNMPSUBAGENT_TABLES_ITERATORINFO_H_
