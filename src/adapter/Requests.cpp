// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "NetSNMPNodeData.h"

int NetSNMP::snmp_succeeded(int status) { return status == 0 ? 1 : 0; }

int NetSNMP::set_snmp_request_error(netsnmp_agent_request_info* reqinfo,
                                    netsnmp_request_info* request, int error) {
  if (error > 0) netsnmp_set_request_error(reqinfo, request, error);
  return error;
}

int NetSNMP::handle_snmp_request(variable_list* var, NetSNMPNodeData* value,
                                 int mode) {
  if (value == nullptr) return SNMP_ERR_BADVALUE;
  switch (mode) {
    case MODE_SET_RESERVE1:
    case MODE_SET_RESERVE2:
      return set_snmp_validate(var, value);
    case MODE_SET_ACTION:
      return SNMP_ERR_NOERROR;
    case MODE_SET_COMMIT:
      return set_snmp_commit(var, value);
    case MODE_GET:
    case MODE_GETNEXT:
      return get_snmp_value(var, value);
    default:
      // FREE and UNDO too: there is no undo; what COMMIT wrote stays.
      return SNMP_ERR_BADVALUE;
  }
}
