// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "peers/peer.h"

static struct bench_values values;

static const oid kScalar[] = {BENCH_ROOT, BENCH_TRAPS, 1, 0};
static const oid kTrigger[] = {BENCH_ROOT, BENCH_TRAPS, 2, 0};
static const oid kNotification[] = {BENCH_ROOT, BENCH_TRAPS, 0, 1};
static const oid kTrapOid[] = {1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

static void send_notification(void) {
  netsnmp_variable_list* variables = NULL;
  snmp_varlist_add_variable(&variables, kTrapOid, OID_LENGTH(kTrapOid),
                            ASN_OBJECT_ID, kNotification, sizeof kNotification);
  snmp_varlist_add_variable(&variables, kScalar, OID_LENGTH(kScalar),
                            ASN_INTEGER, &values.number, sizeof values.number);
  send_v2trap(variables);
  snmp_free_varbind(variables);
}

static int handle_scalar(netsnmp_mib_handler* handler,
                         netsnmp_handler_registration* registration,
                         netsnmp_agent_request_info* info,
                         netsnmp_request_info* request) {
  (void)handler;
  (void)registration;
  if (info->mode == MODE_GET)
    write_value(request->requestvb, &values, BENCH_NUMBER);
  return SNMP_ERR_NOERROR;
}

static int handle_trigger(netsnmp_mib_handler* handler,
                          netsnmp_handler_registration* registration,
                          netsnmp_agent_request_info* info,
                          netsnmp_request_info* request) {
  (void)handler;
  (void)registration;
  if (info->mode == MODE_SET_COMMIT) {
    for (long i = *request->requestvb->val.integer; i > 0; --i)
      send_notification();
  }
  return SNMP_ERR_NOERROR;
}

void register_traps(void) {
  bench_values_of(1, &values);
  netsnmp_register_instance(netsnmp_create_handler_registration(
      "scalar", handle_scalar, kScalar, OID_LENGTH(kScalar),
      HANDLER_CAN_RONLY));
  netsnmp_register_instance(netsnmp_create_handler_registration(
      "trigger", handle_trigger, kTrigger, OID_LENGTH(kTrigger),
      HANDLER_CAN_RWRITE));
}
