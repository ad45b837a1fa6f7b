// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "peers/peer.h"

struct row {
  netsnmp_index index;  // the container's key: first
  oid number;
  struct bench_values values;
};

static int handle_table(netsnmp_mib_handler* handler,
                        netsnmp_handler_registration* registration,
                        netsnmp_agent_request_info* info,
                        netsnmp_request_info* requests) {
  (void)handler;
  (void)registration;
  for (; requests != NULL; requests = requests->next) {
    const struct row* row;
    if (requests->processed) continue;
    row = netsnmp_container_table_row_extract(requests);
    if (row == NULL) {
      netsnmp_set_request_error(info, requests, SNMP_NOSUCHINSTANCE);
    } else {
      write_value(requests->requestvb, &row->values, requested_type(requests));
    }
  }
  return SNMP_ERR_NOERROR;
}

void register_container(unsigned int rows) {
  netsnmp_container* const container =
      netsnmp_container_find("table:table_container");
  for (unsigned int k = 1; k <= rows; ++k) {
    struct row* const row = allocate(1, sizeof *row);
    row->number = k;
    row->index.oids = &row->number;
    row->index.len = 1;
    bench_values_of(k, &row->values);
    CONTAINER_INSERT(container, row);
  }
  netsnmp_container_table_register(table_registration("table", handle_table),
                                   table_columns(), container,
                                   TABLE_CONTAINER_KEY_NETSNMP_INDEX);
}
