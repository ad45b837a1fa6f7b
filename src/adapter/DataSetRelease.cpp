// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/DataSetRelease.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

bool DataSetHasRow(const netsnmp_table_data_set_s& set,
                   const netsnmp_table_row_s& row) {
  return row.prev != nullptr || row.next != nullptr ||
         set.table->first_row == &row;
}

void ReleaseDataSetRow(netsnmp_table_row_s* row) {
  const NetSNMPAgentGuard guard;
  netsnmp_table_dataset_delete_row(row);
}

void ReleaseDataSet(netsnmp_table_data_set_s* set) {
  const NetSNMPAgentGuard guard;
  netsnmp_delete_table_data_set(set);
}
