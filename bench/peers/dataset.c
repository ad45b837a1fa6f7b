// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <string.h>

#include "peers/peer.h"

static void add_column(netsnmp_table_row* row, enum bench_type type,
                       u_char asn_type, const void* value, size_t length) {
  netsnmp_set_row_column(row, BENCH_FIRST_COLUMN + type, asn_type, value,
                         length);
}

static netsnmp_table_row* make_row(unsigned int k) {
  netsnmp_table_row* const row = netsnmp_create_table_data_row();
  struct bench_values values;
  const long index = k;
  int enabled;
  bench_values_of(k, &values);
  enabled = values.enabled ? 1 : 2;
  netsnmp_table_row_add_index(row, ASN_INTEGER, &index, sizeof index);
  add_column(row, BENCH_NUMBER, ASN_INTEGER, &values.number,
             sizeof values.number);
  add_column(row, BENCH_COUNT, ASN_UNSIGNED, &values.count,
             sizeof values.count);
  add_column(row, BENCH_DESCRIPTION, ASN_OCTET_STR, values.description,
             strlen(values.description));
  add_column(row, BENCH_LABEL, ASN_OCTET_STR, values.label,
             strlen(values.label));
  add_column(row, BENCH_ENABLED, ASN_INTEGER, &enabled, sizeof enabled);
  add_column(row, BENCH_ADDRESS, ASN_OCTET_STR, values.address,
             sizeof values.address);
  return row;
}

void register_dataset(unsigned int rows) {
  netsnmp_table_data_set* const table = netsnmp_create_table_data_set("table");
  netsnmp_table_dataset_add_index(table, ASN_INTEGER);
  netsnmp_table_set_multi_add_default_row(
      table, BENCH_FIRST_COLUMN + BENCH_NUMBER, ASN_INTEGER, 0, NULL, 0,
      BENCH_FIRST_COLUMN + BENCH_COUNT, ASN_UNSIGNED, 0, NULL, 0,
      BENCH_FIRST_COLUMN + BENCH_DESCRIPTION, ASN_OCTET_STR, 0, NULL, 0,
      BENCH_FIRST_COLUMN + BENCH_LABEL, ASN_OCTET_STR, 0, NULL, 0,
      BENCH_FIRST_COLUMN + BENCH_ENABLED, ASN_INTEGER, 0, NULL, 0,
      BENCH_FIRST_COLUMN + BENCH_ADDRESS, ASN_OCTET_STR, 0, NULL, 0, 0);
  for (unsigned int k = 1; k <= rows; ++k)
    netsnmp_table_dataset_add_row(table, make_row(k));
  netsnmp_register_table_data_set(table_registration("table", NULL), table,
                                  NULL);
}
