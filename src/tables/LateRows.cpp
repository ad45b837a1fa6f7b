// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/LateRows.h"

#include <new>

#include "NetSNMP.h"

namespace {

// The name under which a request carries its hold.
constexpr char kHoldName[] = "snmpsubagent_dataset_hold";

struct Hold {
  netsnmp_table_data_set* set;
  bool rowsAreLate;
  Hold* next;
};

// Those of all SETs under way.
Hold* first = nullptr;

void RemoveRows(netsnmp_table_data_set* set) {
  netsnmp_table_row* row = nullptr;
  NetSNMP::get_snmp_dataset_first_row(&row, set);
  while (row != nullptr) {
    NetSNMP::delete_remove_snmp_dataset_row(row, set);
    NetSNMP::get_snmp_dataset_first_row(&row, set);
  }
}

// Marks the rows as late with every hold on `set`; whether there was one.
bool MarkLate(const netsnmp_table_data_set* set) {
  bool held = false;
  for (Hold* hold = first; hold != nullptr; hold = hold->next) {
    if (hold->set != set) continue;
    hold->rowsAreLate = true;
    held = true;
  }
  return held;
}

// Called by the agent library when it is done with the request.
void Release(void* released) {
  auto* const hold = static_cast<Hold*>(released);
  Hold** link = &first;
  while (*link != hold) link = &(*link)->next;
  *link = hold->next;
  if (hold->rowsAreLate && !MarkLate(hold->set)) RemoveRows(hold->set);
  delete hold;
}

}  // namespace

bool late_rows::Hold(netsnmp_request_info* request,
                     netsnmp_table_data_set* set) {
  auto* const hold = new (std::nothrow)::Hold{set, false, first};
  if (hold == nullptr) return false;
  netsnmp_data_list* const entry =
      netsnmp_create_data_list(kHoldName, hold, Release);
  if (entry == nullptr) {
    delete hold;
    return false;
  }
  first = hold;
  netsnmp_request_add_list_data(request, entry);
  return true;
}

void late_rows::Remove(netsnmp_table_data_set* set) {
  if (!MarkLate(set)) RemoveRows(set);
}
