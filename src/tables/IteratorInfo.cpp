// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/IteratorInfo.h"

#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"

namespace {

netsnmp_table_registration_info* NewTableInfo(
    const NetSNMPTableEntryNode& entry) {
  auto* const info = SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  if (info == nullptr) return nullptr;
  for (const NetSNMPNodeData* index : entry.indexTemplate_) {
    NetSNMP::add_index_snmp_table(
        info, index == nullptr ? 0 : index->NodeIndexASNDataType());
  }
  info->min_column = static_cast<unsigned int>(entry.indexTemplate_.size()) + 1;
  info->max_column = entry.columnCount_;
  return info;
}

}  // namespace

netsnmp_iterator_info_s* NewIteratorInfo(const NetSNMPTableEntryNode& entry,
                                         std::string* tableName) {
  if (entry.indexTemplate_.empty()) return nullptr;
  netsnmp_table_registration_info* const tableInfo = NewTableInfo(entry);
  if (tableInfo == nullptr) return nullptr;
  auto* const info = SNMP_MALLOC_TYPEDEF(netsnmp_iterator_info);
  if (info == nullptr) {
    NetSNMP::free_table_registration_info(tableInfo);
    return nullptr;
  }
  info->get_first_data_point = table_get_first_data_point;
  info->get_next_data_point = table_get_next_data_point;
  info->table_reginfo = tableInfo;
  info->myvoid = tableName;
  return info;
}
