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

enum bench_type requested_type(netsnmp_request_info* request) {
  const netsnmp_table_request_info* const info =
      netsnmp_extract_table_info(request);
  return (enum bench_type)(info->colnum - BENCH_FIRST_COLUMN);
}
