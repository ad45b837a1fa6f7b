// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <string.h>

#include "peers/peer.h"

struct scalar {
  struct bench_values values;
  enum bench_type type;
};

static int check(netsnmp_variable_list* variable, enum bench_type type) {
  switch (type) {
    case BENCH_NUMBER:
      return netsnmp_check_vb_int(variable);
    case BENCH_COUNT:
      return netsnmp_check_vb_type(variable, ASN_UNSIGNED);
    case BENCH_DESCRIPTION:
      return netsnmp_check_vb_type_and_max_size(
          variable, ASN_OCTET_STR,
          sizeof(((struct bench_values*)NULL)->description) - 1);
    case BENCH_LABEL:
      return netsnmp_check_vb_type_and_max_size(
          variable, ASN_OCTET_STR,
          sizeof(((struct bench_values*)NULL)->label) - 1);
    case BENCH_ENABLED:
      return netsnmp_check_vb_truthvalue(variable);
    default:
      return netsnmp_check_vb_type_and_size(
          variable, ASN_OCTET_STR,
          sizeof(((struct bench_values*)NULL)->address));
  }
}

static void copy_text(char* text, const netsnmp_variable_list* variable) {
  memcpy(text, variable->val.string, variable->val_len);
  text[variable->val_len] = '\0';
}

static void read_value(struct bench_values* values, enum bench_type type,
                       const netsnmp_variable_list* variable) {
  switch (type) {
    case BENCH_NUMBER:
      values->number = (int)*variable->val.integer;
      break;
    case BENCH_COUNT:
      values->count = (unsigned int)*variable->val.integer;
      break;
    case BENCH_DESCRIPTION:
      copy_text(values->description, variable);
      break;
    case BENCH_LABEL:
      copy_text(values->label, variable);
      break;
    case BENCH_ENABLED:
      values->enabled = *variable->val.integer == 1;
      break;
    default:
      memcpy(values->address, variable->val.string, variable->val_len);
      break;
  }
}

static int handle_scalar(netsnmp_mib_handler* handler,
                         netsnmp_handler_registration* registration,
                         netsnmp_agent_request_info* info,
                         netsnmp_request_info* request) {
  struct scalar* const scalar = registration->my_reg_void;
  int error = SNMP_ERR_NOERROR;
  (void)handler;
  switch (info->mode) {
    case MODE_GET:
      write_value(request->requestvb, &scalar->values, scalar->type);
      break;
    case MODE_SET_RESERVE1:
      error = check(request->requestvb, scalar->type);
      if (error != SNMP_ERR_NOERROR)
        netsnmp_set_request_error(info, request, error);
      break;
    case MODE_SET_COMMIT:
      read_value(&scalar->values, scalar->type, request->requestvb);
      break;
    default:
      break;
  }
  return SNMP_ERR_NOERROR;
}

void register_scalars(unsigned int count) {
  struct scalar* const scalars = allocate(count, sizeof *scalars);
  for (unsigned int k = 1; k <= count; ++k) {
    struct scalar* const scalar = &scalars[k - 1];
    const oid name[] = {BENCH_ROOT, BENCH_SCALARS, k, 0};
    char text[24];
    netsnmp_handler_registration* registration;
    bench_values_of(k, &scalar->values);
    scalar->type = bench_type_of_scalar(k);
    snprintf(text, sizeof text, "scalar%06u", k);
    registration = netsnmp_create_handler_registration(
        text, handle_scalar, name, OID_LENGTH(name), HANDLER_CAN_RWRITE);
    registration->my_reg_void = scalar;
    netsnmp_register_instance(registration);
  }
}
