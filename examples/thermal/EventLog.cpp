// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "EventLog.h"

#include <array>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataSetTableNode.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

namespace {

constexpr unsigned int kKept = 20;

NetSNMPDataSetTableNode* BuildTable() {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 1, 1, 3};
  NetSNMPUnsignedIntNodeData number(nullptr, eNodeAccessReadOnly);
  NetSNMPStringNodeData text(nullptr, eNodeAccessReadOnly);
  return new NetSNMPDataSetTableNode(
      oid.data(), oid.size(), "thermalEventTable",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadOnly, nullptr, nullptr),
      {&number, &text});
}

void RemoveOldest(netsnmp_table_data_set* events) {
  netsnmp_table_row* oldest = nullptr;
  NetSNMP::get_snmp_dataset_first_row(&oldest, events);
  NetSNMP::delete_remove_snmp_dataset_row(oldest, events);
}

}  // namespace

EventLog::EventLog() : table_(BuildTable()) {}

void EventLog::Add(const std::string& text) {
  const NetSNMPAgentGuard guard;
  unsigned int number = count_ + 1;
  std::string copy = text;
  NetSNMPUnsignedIntNodeData index(&number, eNodeAccessReadOnly);
  NetSNMPStringNodeData column(&copy, eNodeAccessReadOnly);
  if (!table_->AddRow({&index, &column})) return;
  count_ = number;
  if (count_ > kKept) RemoveOldest(table_->dataset_);
}
