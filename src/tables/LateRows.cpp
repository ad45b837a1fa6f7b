// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/LateRows.h"

#include <memory>
#include <new>
#include <utility>

#include "NetSNMP.h"
#include "adapter/RequestHold.h"

namespace {

// The name under which a request carries its hold.
constexpr char kHoldName[] = "snmpsubagent_dataset_hold";

void RemoveRows(netsnmp_table_data_set* set) {
  netsnmp_table_row* row = nullptr;
  NetSNMP::get_snmp_dataset_first_row(&row, set);
  while (row != nullptr) {
    NetSNMP::delete_remove_snmp_dataset_row(row, set);
    NetSNMP::get_snmp_dataset_first_row(&row, set);
  }
}

class DataSetHold : public RequestHold<DataSetHold> {
 public:
  explicit DataSetHold(netsnmp_table_data_set* set) : set_(set) {}
  ~DataSetHold() {
    netsnmp_table_data_set* const set = std::exchange(set_, nullptr);
    if (rowsAreLate_ && !MarkLate(set)) RemoveRows(set);
  }

  // Marks the rows as late with every hold on `set`; whether there was one.
  static bool MarkLate(const netsnmp_table_data_set* set) {
    bool held = false;
    for (auto* hold = First(); hold != nullptr; hold = hold->Next()) {
      if (hold->set_ != set) continue;
      hold->rowsAreLate_ = true;
      held = true;
    }
    return held;
  }

 private:
  netsnmp_table_data_set* set_;
  bool rowsAreLate_ = false;
};

}  // namespace

bool late_rows::Hold(netsnmp_request_info* request,
                     netsnmp_table_data_set* set) {
  std::unique_ptr<DataSetHold> hold(new (std::nothrow) DataSetHold(set));
  return KeepWithRequest(request, kHoldName, std::move(hold));
}

void late_rows::Remove(netsnmp_table_data_set* set) {
  if (!DataSetHold::MarkLate(set)) RemoveRows(set);
}
