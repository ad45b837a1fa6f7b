// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_LATEROWS_H_
#define SNMPSUBAGENT_TABLES_LATEROWS_H_

struct netsnmp_request_info_s;
struct netsnmp_table_data_set_s;

// Rows of a dataset that are removed while a SET works on one of them. The
// agent library keeps their addresses from the first phase of the SET to the
// last and would free them a second time, so they stay until the SET has ended.
//
// Requires, for both: the lock of NetSNMPAgentGuard.
namespace late_rows {

// Notes that a SET works on rows of `set`, for as long as the agent library
// keeps `request`. Returns false if there is no memory for it.
bool Hold(netsnmp_request_info_s* request, netsnmp_table_data_set_s* set);

// Removes all rows of `set`, at once or when no SET works on it any more. Takes
// no memory.
void Remove(netsnmp_table_data_set_s* set);

}  // namespace late_rows

#endif  // SNMPSUBAGENT_TABLES_LATEROWS_H_
