// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_DATASET_H_
#define SNMPSUBAGENT_ADAPTER_DATASET_H_

struct netsnmp_handler_registration_s;
struct netsnmp_table_data_set_s;
struct netsnmp_table_row_s;

// What Net-SNMP leaves to the caller of its datasets.
namespace data_set {

// Whether `set` took `row` when it was added.
bool HasRow(const netsnmp_table_data_set_s& set,
            const netsnmp_table_row_s& row);

// Frees a row that no dataset has, with its values.
void FreeRow(netsnmp_table_row_s* row);

// Frees a dataset that is not registered: rows, columns and the table.
void Free(netsnmp_table_data_set_s* set);

// Injects a handler at the head of a registered dataset's chain which hands on
// the varbinds of a SET one at a time. Net-SNMP's handler would crash on
// several if one of them is no cell of the table. Without memory for it, the
// dataset becomes read-only.
void SetOneByOne(netsnmp_handler_registration_s* registration);

}  // namespace data_set

#endif  // SNMPSUBAGENT_ADAPTER_DATASET_H_
