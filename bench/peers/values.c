// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <stdlib.h>
#include <string.h>

#include "peers/peer.h"

enum { TRUE_VALUE = 1, FALSE_VALUE = 2 };  // TruthValue (RFC 2579)

void write_value(netsnmp_variable_list* variable,
                 const struct bench_values* values, enum bench_type type) {
  switch (type) {
    case BENCH_NUMBER:
      snmp_set_var_typed_integer(variable, ASN_INTEGER, values->number);
      break;
    case BENCH_COUNT:
      snmp_set_var_typed_integer(variable, ASN_UNSIGNED, values->count);
      break;
    case BENCH_DESCRIPTION:
      snmp_set_var_typed_value(variable, ASN_OCTET_STR, values->description,
                               strlen(values->description));
      break;
    case BENCH_LABEL:
      snmp_set_var_typed_value(variable, ASN_OCTET_STR, values->label,
                               strlen(values->label));
      break;
    case BENCH_ENABLED:
      snmp_set_var_typed_integer(variable, ASN_INTEGER,
                                 values->enabled ? TRUE_VALUE : FALSE_VALUE);
      break;
    default:
      snmp_set_var_typed_value(variable, ASN_OCTET_STR, values->address,
                               sizeof values->address);
      break;
  }
}

void* allocate(size_t count, size_t size) {
  void* const memory = calloc(count, size);
  if (memory == NULL) abort();
  return memory;
}
