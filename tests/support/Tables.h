// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_TABLES_H_
#define SNMPSUBAGENT_TESTS_TABLES_H_

#include <string>
#include <vector>

#include "NetSNMPDataSetTableNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"

namespace support {

// The OID under which all tables of the tests stand, as the tools print it.
std::string TablesOid();

// The OID of the table `number`.
std::string TableOid(unsigned long number);

// The OID of a cell of it; `instance` is the row's, as "2.10".
std::string CellOid(unsigned long number, unsigned int column,
                    const std::string& instance);

// Builds the iterator table `number`, which is readable and writable; the
// registry owns it.
NetSNMPTableNode* AddTable(unsigned long number, const std::string& name,
                           void (*callback)(NetSNMPDataNode*) = nullptr,
                           const std::string& trapName = "");

// Builds the store of the table `number`, with so many integer indexes and
// columns in all; its row keys begin with its name. `table` may be null. The
// registry owns it.
NetSNMPTableEntryNode* AddStore(unsigned long number, const std::string& name,
                                unsigned int indexCount,
                                unsigned int columnCount,
                                NetSNMPTableNode* table);

// Builds the dataset table `number`, which is readable and writable; the
// registry owns it.
NetSNMPDataSetTableNode* AddDataSetTable(
    unsigned long number, const std::string& name,
    const std::vector<NetSNMPNodeData*>& columns);

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_TABLES_H_
