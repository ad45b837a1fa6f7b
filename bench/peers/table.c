// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "peers/peer.h"

netsnmp_handler_registration* table_registration(
    const char* name, Netsnmp_Node_Handler* handler) {
  static const oid kTable[] = {BENCH_ROOT, BENCH_TABLE};
  return netsnmp_create_handler_registration(
      name, handler, kTable, OID_LENGTH(kTable), HANDLER_CAN_RONLY);
}

netsnmp_table_registration_info* table_columns(void) {
  netsnmp_table_registration_info* const info =
      allocate(1, sizeof(netsnmp_table_registration_info));
  netsnmp_table_helper_add_index(info, ASN_INTEGER);
  info->min_column = BENCH_FIRST_COLUMN;
  info->max_column = BENCH_LAST_COLUMN;
  return info;
}

static enum bench_type requested_type(netsnmp_request_info* request) {
  const netsnmp_table_request_info* const info =
      netsnmp_extract_table_info(request);
  return (enum bench_type)(info->colnum - BENCH_FIRST_COLUMN);
}

int answer_cells(
    netsnmp_agent_request_info* info, netsnmp_request_info* requests,
    const struct bench_values* (*values_of_row)(netsnmp_request_info*)) {
  for (; requests != NULL; requests = requests->next) {
    const struct bench_values* values;
    if (requests->processed) continue;
    values = values_of_row(requests);
    if (values == NULL) {
      netsnmp_set_request_error(info, requests, SNMP_NOSUCHINSTANCE);
    } else {
      write_value(requests->requestvb, values, requested_type(requests));
    }
  }
  return SNMP_ERR_NOERROR;
}
