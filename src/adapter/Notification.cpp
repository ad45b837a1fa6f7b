// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

unsigned long objid_snmptrap[11] = {1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

int NetSNMP::send_trap(variable_list* vars) {
  const MasterExchange exchange;
  send_v2trap(vars);
  return 0;
}
