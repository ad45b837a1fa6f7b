// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/DataSet.h"

#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

bool data_set::HasRow(const netsnmp_table_data_set& set,
                      const netsnmp_table_row& row) {
  return row.prev != nullptr || row.next != nullptr ||
         set.table->first_row == &row;
}

void data_set::FreeRow(netsnmp_table_row* row) {
  const NetSNMPAgentGuard guard;
  netsnmp_table_dataset_delete_row(row);
}

void data_set::Free(netsnmp_table_data_set* set) {
  const NetSNMPAgentGuard guard;
  netsnmp_delete_table_data_set(set);
}

int NetSNMP::create_snmp_dataset(netsnmp_table_data_set** set, const char* name,
                                 int allowCreation, unsigned char indexType) {
  const NetSNMPAgentGuard guard;
  *set = netsnmp_create_table_data_set(name);
  if (*set == nullptr) return 0;
  (*set)->allow_creation = allowCreation;
  netsnmp_table_dataset_add_index(*set, indexType);
  return 0;
}

int NetSNMP::define_snmp_dataset_column(netsnmp_table_data_set* set,
                                        unsigned int column, int type,
                                        int writable) {
  const NetSNMPAgentGuard guard;
  return netsnmp_table_set_add_default_row(set, column, type, writable, nullptr,
                                           0);
}

int NetSNMP::register_snmp_dataset_table(netsnmp_handler_registration* reg,
                                         netsnmp_table_data_set* set) {
  const MasterExchange exchange;
  return netsnmp_register_table_data_set(reg, set, nullptr);
}

int NetSNMP::create_snmp_dataset_row(netsnmp_table_row** row) {
  *row = netsnmp_create_table_data_row();
  return 0;
}

int NetSNMP::add_index_snmp_dataset(netsnmp_table_row* row, unsigned char type,
                                    const unsigned char* value,
                                    unsigned int valueLen) {
  snmp_varlist_add_variable(&row->indexes, nullptr, 0, type, value, valueLen);
  return 0;
}

int NetSNMP::set_snmp_dataset_row_col(netsnmp_table_row* row,
                                      unsigned int column, unsigned char type,
                                      const char* value, unsigned int valueLen,
                                      int writable) {
  const NetSNMPAgentGuard guard;
  const int result = netsnmp_set_row_column(row, column, type, value, valueLen);
  if (snmp_succeeded(result)) {
    netsnmp_mark_row_column_writable(row, column, writable);
  }
  return result;
}

int NetSNMP::add_snmp_dataset_row(netsnmp_table_row* row,
                                  netsnmp_table_data_set* set) {
  const NetSNMPAgentGuard guard;
  netsnmp_table_dataset_add_row(set, row);
  return 0;
}

int NetSNMP::delete_remove_snmp_dataset_row(netsnmp_table_row* row,
                                            netsnmp_table_data_set* set) {
  const NetSNMPAgentGuard guard;
  netsnmp_table_dataset_remove_and_delete_row(set, row);
  return 0;
}

int NetSNMP::get_snmp_dataset_first_row(netsnmp_table_row** row,
                                        netsnmp_table_data_set* set) {
  const NetSNMPAgentGuard guard;
  *row = netsnmp_table_data_set_get_first_row(set);
  return 0;
}
