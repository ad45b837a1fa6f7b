// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/DataSet.h"

#include <cstddef>
#include <utility>

#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

namespace {

bool AreOfOneRow(const netsnmp_handler_registration& registration,
                 const netsnmp_request_info& one,
                 const netsnmp_request_info& other) {
  // Table, entry and column come before the index.
  const std::size_t prefix = registration.rootoid_len + 2;
  const netsnmp_variable_list& a = *one.requestvb;
  const netsnmp_variable_list& b = *other.requestvb;
  return a.name_length > prefix && b.name_length > prefix &&
         netsnmp_oid_equals(a.name + prefix, a.name_length - prefix,
                            b.name + prefix, b.name_length - prefix) == 0;
}

// Net-SNMP frees a row for its first varbind, and reads it for each further one
// that is not marked as processed.
void CommitOrUndoOnce(const netsnmp_handler_registration& registration,
                      const netsnmp_request_info* requests,
                      netsnmp_request_info& request) {
  for (; requests != &request; requests = requests->next) {
    if (AreOfOneRow(registration, *requests, request)) request.processed = 1;
  }
}

// As Net-SNMP's serialize helper does, which does not look at the rows.
int HandOnOneByOne(netsnmp_mib_handler* handler,
                   netsnmp_handler_registration* registration,
                   netsnmp_agent_request_info* requestInfo,
                   netsnmp_request_info* requests) {
  const int mode = requestInfo->mode;
  if (MODE_IS_GET(mode)) {
    return netsnmp_call_next_handler(handler, registration, requestInfo,
                                     requests);
  }
  for (netsnmp_request_info* request = requests; request != nullptr;) {
    if (mode == MODE_SET_COMMIT || mode == MODE_SET_UNDO) {
      CommitOrUndoOnce(*registration, requests, *request);
    }
    netsnmp_request_info* const next = std::exchange(request->next, nullptr);
    const int result =
        netsnmp_call_next_handler(handler, registration, requestInfo, request);
    request->next = next;
    if (result != SNMP_ERR_NOERROR) return result;
    request = next;
  }
  return SNMP_ERR_NOERROR;
}

}  // namespace

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

void data_set::SetOneByOne(netsnmp_handler_registration* registration) {
  netsnmp_mib_handler* const handler =
      netsnmp_create_handler("snmpsubagent_one_by_one", HandOnOneByOne);
  if (handler == nullptr) {
    registration->modes &= ~HANDLER_CAN_SET;
    return;
  }
  netsnmp_inject_handler(registration, handler);
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
