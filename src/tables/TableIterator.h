// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_TABLEITERATOR_H_
#define SNMPSUBAGENT_TABLES_TABLEITERATOR_H_

#include <string>

class NetSNMPTableEntryNode;
class NetSNMPTableNode;
struct netsnmp_iterator_info_s;

// Our side of the agent library's table iterator. The hooks, with which it
// walks the rows, are declared in NetSNMPTableNode.h.
namespace table_iterator {

// What the iterator has to know of a table with the rows of `store`: the hooks,
// the types of the indexes, the columns. The hooks find the table by
// `tableName`, which is borrowed. Null if the table has no indexes or there is
// no memory.
netsnmp_iterator_info_s* NewInfo(const NetSNMPTableEntryNode& store,
                                 std::string* tableName);

// The iterator table of that name, or null. A name that the registry lacks is
// entered, with a null node. Requires: a registry.
NetSNMPTableNode* FindTable(const std::string& name);

}  // namespace table_iterator

#endif  // SNMPSUBAGENT_TABLES_TABLEITERATOR_H_
