// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/KeptDataSets.h"

#include "NetSNMP.h"

namespace {

netsnmp_mib_handler* DataSetHandlerOf(
    netsnmp_handler_registration* registration) {
  return netsnmp_find_handler_by_name(registration, TABLE_DATA_SET_NAME);
}

netsnmp_handler_registration* NextWithDataSet() {
  for (const auto* subtree = netsnmp_subtree_find_first(""); subtree != nullptr;
       subtree = subtree->next) {
    if (DataSetHandlerOf(subtree->reginfo) != nullptr) return subtree->reginfo;
  }
  return nullptr;
}

}  // namespace

KeptDataSets::~KeptDataSets() {
  while (auto* const registration = NextWithDataSet()) {
    auto* const dataset = static_cast<netsnmp_table_data_set*>(
        DataSetHandlerOf(registration)->myvoid);
    netsnmp_unregister_handler(registration);
    netsnmp_delete_table_data_set(dataset);
  }
}
