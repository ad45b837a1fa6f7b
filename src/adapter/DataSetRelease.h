// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_DATASETRELEASE_H_
#define SNMPSUBAGENT_ADAPTER_DATASETRELEASE_H_

struct netsnmp_table_data_set_s;
struct netsnmp_table_row_s;

// What the agent library leaves to its caller when it does not take a dataset
// or a row of one.

// Whether `set` took `row` when it was added.
bool DataSetHasRow(const netsnmp_table_data_set_s& set,
                   const netsnmp_table_row_s& row);

// Frees a row that no dataset has, with its values.
void ReleaseDataSetRow(netsnmp_table_row_s* row);

// Frees a dataset that is not registered: rows, columns and the table.
void ReleaseDataSet(netsnmp_table_data_set_s* set);

#endif  // SNMPSUBAGENT_ADAPTER_DATASETRELEASE_H_
