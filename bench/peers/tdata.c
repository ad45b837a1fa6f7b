// SPDX-License-Identifier: LicenseRef-SnmpSubAgent

#include "peers/peer.h"

static int handle_table(netsnmp_mib_handler* handler,
                        netsnmp_handler_registration* registration,
                        netsnmp_agent_request_info* info,
                        netsnmp_request_info* requests) {
  (void)handler;
  (void)registration;
  for (; requests != NULL; requests = requests->next) {
    const struct bench_values* values;
    if (requests->processed) continue;
    values = netsnmp_tdata_extract_entry(requests);
    if (values == NULL) {
      netsnmp_set_request_error(info, requests, SNMP_NOSUCHINSTANCE);
    } else {
      write_value(requests->requestvb, values, requested_type(requests));
    }
  }
  return SNMP_ERR_NOERROR;
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
