// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "peers/peer.h"

struct row {
  netsnmp_index index;  // the container's key: first
  oid number;
  struct bench_values values;
};

static const struct bench_values* values_of_row(netsnmp_request_info* request) {
  const struct row* const row = netsnmp_container_table_row_extract(request);
  return row == NULL ? NULL : &row->values;
}

static int handle_table(netsnmp_mib_handler* handler,
                        netsnmp_handler_registration* registration,
                        netsnmp_agent_request_info* info,
                        netsnmp_request_info* requests) {
  (void)handler;
  (void)registration;
  return answer_cells(info, requests, values_of_row);
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
