// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstdlib>

#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

unsigned long objid_snmptrap[11] = {1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

namespace {

variable_list* Last(variable_list* list) {
  while (list->next_variable != nullptr) list = list->next_variable;
  return list;
}

}  // namespace

int NetSNMP::snmp_succeeded(int status) { return status == 0 ? 1 : 0; }

int NetSNMP::count_snmp_variable_list(variable_list* list) {
  int count = 0;
  for (; list != nullptr; list = list->next_variable) ++count;
  return count;
}

void NetSNMP::push_back_snmp_variable_list(variable_list* list,
                                           variable_list* var) {
  if (list != nullptr && var != nullptr) Last(list)->next_variable = var;
}

int NetSNMP::pop_back_snmp_variable_list(variable_list* list,
                                         variable_list** var) {
  if (list == nullptr) return SNMP_ERR_GENERR;
  variable_list* const last = Last(list);
  for (; list != last; list = list->next_variable) {
    if (list->next_variable == last) {
      list->next_variable = nullptr;
      break;
    }
  }
  *var = last;
  return SNMP_ERR_NOERROR;
}

int NetSNMP::allocate_next_variable_list(variable_list** cursor) {
  if (*cursor == nullptr) return SNMP_ERR_GENERR;
  auto* const next =
      static_cast<variable_list*>(std::calloc(1, sizeof(variable_list)));
  if (next == nullptr) return SNMP_ERR_GENERR;
  (*cursor)->next_variable = next;
  *cursor = next;
  return SNMP_ERR_NOERROR;
}

void NetSNMP::delete_snmp_variable_list(variable_list** list) {
  snmp_free_varbind(*list);
  *list = nullptr;
}

variable_list* NetSNMP::add_snmp_varlist_variable(
    variable_list** list, const unsigned long* name, unsigned int nameLen,
    unsigned char type, unsigned char* value, unsigned int valueLen) {
  // The agent library stores lengths of OIDs in 8 bits and would send another
  // OID.
  const bool tooLong =
      nameLen > MAX_OID_LEN ||
      (type == ASN_OBJECT_ID && valueLen > MAX_OID_LEN * sizeof(oid));
  if (tooLong) return nullptr;
  return snmp_varlist_add_variable(list, name, nameLen, type, value, valueLen);
}

int NetSNMP::send_trap(variable_list* vars) {
  const MasterExchange exchange;
  send_v2trap(vars);
  return 0;
}
