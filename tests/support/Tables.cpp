// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Tables.h"

#include <array>

#include "NetSNMPIntNodeData.h"

namespace support {
namespace {

std::array<unsigned long, 9> OidOf(unsigned long number) {
  return {1, 3, 6, 1, 4, 1, 32473, 98, number};
}

NetSNMPNodeData ReadWrite() {
  return NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr);
}

}  // namespace

std::string TablesOid() { return ".1.3.6.1.4.1.32473.98"; }

std::string TableOid(unsigned long number) {
  return TablesOid() + "." + std::to_string(number);
}

std::string CellOid(unsigned long number, unsigned int column,
                    const std::string& instance) {
  return TableOid(number) + ".1." + std::to_string(column) + "." + instance;
}

NetSNMPTableNode* AddTable(unsigned long number, const std::string& name,
                           void (*callback)(NetSNMPDataNode*),
                           const std::string& trapName) {
  auto oid = OidOf(number);
  return new NetSNMPTableNode(oid.data(), oid.size(), name, ReadWrite(),
                              callback, trapName);
}

NetSNMPTableEntryNode* AddStore(unsigned long number, const std::string& name,
                                unsigned int indexCount,
                                unsigned int columnCount,
                                NetSNMPTableNode* table) {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 98, number, 1};
  int zero = 0;
  NetSNMPIntNodeData index(&zero, eNodeAccessReadOnly, true);
  const std::vector<NetSNMPNodeData*> indexes(indexCount, &index);
  return new NetSNMPTableEntryNode(oid.data(), oid.size(), name, name, indexes,
                                   columnCount, table);
}

NetSNMPDataSetTableNode* AddDataSetTable(
    unsigned long number, const std::string& name,
    const std::vector<NetSNMPNodeData*>& columns) {
  auto oid = OidOf(number);
  return new NetSNMPDataSetTableNode(oid.data(), oid.size(), name, ReadWrite(),
                                     columns);
}

}  // namespace support
