// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_DATASET_H_
#define SNMPSUBAGENT_ADAPTER_DATASET_H_

struct netsnmp_table_data_set_s;
struct netsnmp_table_row_s;

// What remains to be done by the caller when Net-SNMP does not take a dataset
// or a row of one.
namespace data_set {

// Whether `set` took `row` when it was added.
bool HasRow(const netsnmp_table_data_set_s& set,
            const netsnmp_table_row_s& row);

// Frees a row that no dataset has, with its values.
void FreeRow(netsnmp_table_row_s* row);

// Frees a dataset that is not registered: rows, columns and the table.
void Free(netsnmp_table_data_set_s* set);

}  // namespace data_set

#endif  // SNMPSUBAGENT_ADAPTER_DATASET_H_
