// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "peers/peer.h"

struct row {
  long index;
  struct bench_values values;
  struct row* next;
};

static struct row* first_row;

static netsnmp_variable_list* hand_out(struct row* row, void** loop_context,
                                       void** data_context,
                                       netsnmp_variable_list* indexes) {
  if (row == NULL) return NULL;
  *loop_context = row;
  *data_context = row;
  snmp_set_var_typed_integer(indexes, ASN_INTEGER, row->index);
  return indexes;
}

static netsnmp_variable_list* get_first(void** loop_context,
                                        void** data_context,
                                        netsnmp_variable_list* indexes,
                                        netsnmp_iterator_info* info) {
  (void)info;
  return hand_out(first_row, loop_context, data_context, indexes);
}

static netsnmp_variable_list* get_next(void** loop_context, void** data_context,
                                       netsnmp_variable_list* indexes,
                                       netsnmp_iterator_info* info) {
  struct row* const row = *loop_context;
  (void)info;
  return hand_out(row->next, loop_context, data_context, indexes);
}

static const struct bench_values* values_of_row(netsnmp_request_info* request) {
  const struct row* const row = netsnmp_extract_iterator_context(request);
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

static void make_rows(unsigned int count) {
  for (; count > 0; --count) {
    struct row* const row = allocate(1, sizeof *row);
    row->index = count;
    bench_values_of(count, &row->values);
    row->next = first_row;
    first_row = row;
  }
}

static void register_with_flags(unsigned int rows, int flags) {
  netsnmp_iterator_info* const info = allocate(1, sizeof *info);
  make_rows(rows);
  info->get_first_data_point = get_first;
  info->get_next_data_point = get_next;
  info->table_reginfo = table_columns();
  info->flags = flags;
  netsnmp_register_table_iterator2(table_registration("table", handle_table),
                                   info);
}

void register_iterator(unsigned int rows) { register_with_flags(rows, 0); }

void register_sorted_iterator(unsigned int rows) {
  register_with_flags(rows, NETSNMP_ITERATOR_FLAG_SORTED);
}
