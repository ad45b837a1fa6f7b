// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

int NetSNMP::add_index_snmp_table(netsnmp_table_registration_info* info,
                                  unsigned char type) {
  snmp_varlist_add_variable(&info->indexes, nullptr, 0, type, nullptr, 0);
  return 0;
}

int NetSNMP::register_snmp_table_iterator(netsnmp_handler_registration* reg,
                                          netsnmp_iterator_info* info) {
  const MasterExchange exchange;
  return netsnmp_register_table_iterator(reg, info);
}

int NetSNMP::delete_snmp_table_iterator(netsnmp_iterator_info* info) {
  const NetSNMPAgentGuard guard;
  if (info != nullptr) netsnmp_iterator_delete_table(info);
  return 0;
}

int NetSNMP::free_table_registration_info(
    netsnmp_table_registration_info* info) {
  netsnmp_table_registration_info_free(info);
  return 0;
}

int NetSNMP::extract_snmp_iterator_context(void** context,
                                           netsnmp_request_info* request) {
  *context = netsnmp_extract_iterator_context(request);
  return 0;
}

int NetSNMP::extract_snmp_table_info(netsnmp_table_request_info** info,
                                     netsnmp_request_info* request) {
  *info = netsnmp_extract_table_info(request);
  return 0;
}
