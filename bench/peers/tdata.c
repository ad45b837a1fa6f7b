// SPDX-License-Identifier: LicenseRef-SnmpSubAgent

#include "peers/peer.h"

static const struct bench_values* values_of_row(netsnmp_request_info* request) {
  return netsnmp_tdata_extract_entry(request);
}

static int handle_table(netsnmp_mib_handler* handler,
                        netsnmp_handler_registration* registration,
                        netsnmp_agent_request_info* info,
                        netsnmp_request_info* requests) {
  (void)handler;
  (void)registration;
  return answer_cells(info, requests, values_of_row);
}

void register_tdata(unsigned int rows) {
  netsnmp_tdata* const table = netsnmp_tdata_create_table("table", 0);
  netsnmp_tdata_add_index(table, ASN_INTEGER);
  for (unsigned int k = 1; k <= rows; ++k) {
    netsnmp_tdata_row* const row = netsnmp_tdata_create_row();
    struct bench_values* const values = allocate(1, sizeof *values);
    const long index = k;
    bench_values_of(k, values);
    row->data = values;
    netsnmp_tdata_row_add_index(row, ASN_INTEGER, &index, sizeof index);
    netsnmp_tdata_add_row(table, row);
  }
  netsnmp_tdata_register(table_registration("table", handle_table), table,
                         table_columns());
}
