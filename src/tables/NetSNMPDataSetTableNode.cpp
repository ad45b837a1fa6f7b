// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataSetTableNode.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "adapter/DataSetRelease.h"
#include "nodes/LateRegistrations.h"
#include "nodes/NodeWatch.h"
#include "tables/LateRows.h"
#include "values/OwnedValues.h"

namespace {

// The column that every value behind the index is written to, one over the
// other: a row of the dataset shows its last value.
constexpr unsigned int kValueColumn = 2;

void WriteIndex(netsnmp_table_row* row, const NetSNMPNodeData& value) {
  NetSNMP::add_index_snmp_dataset(row, value.NodeASNDataType(),
                                  value.NodeByteValue(), value.NodeValueSize());
}

void WriteColumn(netsnmp_table_row* row, const NetSNMPNodeData& value) {
  // A cell does not change its type unless it is cleared.
  NetSNMP::set_snmp_dataset_row_col(row, kValueColumn, SNMP_NOSUCHINSTANCE,
                                    nullptr, 0, 0);
  NetSNMP::set_snmp_dataset_row_col(
      row, kValueColumn, value.NodeASNDataType(),
      reinterpret_cast<const char*>(value.NodeByteValue()),
      value.NodeValueSize(), value.NodeWritable());
}

}  // namespace

NetSNMPDataSetTableNode::NetSNMPDataSetTableNode(
    unsigned long* oid, unsigned int oidLen, const std::string& name,
    const NetSNMPNodeData& accessData,
    const std::vector<NetSNMPNodeData*>& columns)
    : NetSNMPDataSetTableNode(NetSNMPAgentGuard(), oid, oidLen, name,
                              NetSNMPNodeData(accessData),
                              OwnedValues(columns).Get()) {}

NetSNMPDataSetTableNode::NetSNMPDataSetTableNode(
    const NetSNMPAgentGuard&, unsigned long* oid, unsigned int oidLen,
    const std::string& name, const NetSNMPNodeData& accessData,
    const std::vector<NetSNMPNodeData*>& columns)
    : NetSNMPNode(oid, oidLen, name),
      dataset_(nullptr),
      accessData_(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr),
      heldDataset_(nullptr) {
  accessData_.CopyData(accessData);
  NetSNMPNodeData::CopyDataVector(columns, columnTemplate_);
  NetSNMPDataSetTableNode::RegisterNode();
}

NetSNMPDataSetTableNode::~NetSNMPDataSetTableNode() {
  const NetSNMPAgentGuard guard;
  NetSNMPNodeData::DestroyDataVector(columnTemplate_);
  if (dataset_ != nullptr) late_rows::Remove(dataset_);
  ReleaseDataset();
  LeaveRegistry();
}

bool NetSNMPDataSetTableNode::RegisterNode() {
  const NetSNMPAgentGuard guard;
  if (registered_ || !mapped_ || !SubAgentConnected()) return registered_;
  if (columnTemplate_.empty() || columnTemplate_.front() == nullptr) {
    return registered_;
  }
  if (late_registrations::Await(*this)) return registered_;
  CreateDataset();
  if (dataset_ == nullptr) return registered_;
  netsnmp_handler_registration* registration = nullptr;
  const int created = NetSNMP::create_snmp_handler_registration(
      &registration, nodeName_.c_str(), var_dataset_table_handler, nodeOID_,
      nodeOIDLen_, accessData_.NodeHandlerModes());
  if (NetSNMP::snmp_succeeded(created) == 0) return false;
  registered_ = true;
  heldDataset_ = dataset_;
  const NodeWatch watch(this);
  const int result =
      NetSNMP::register_snmp_dataset_table(registration, dataset_);
  // A request served meanwhile may have deleted the node.
  if (!watch.Alive()) return false;
  registered_ = NetSNMP::snmp_succeeded(result) != 0;
  if (!registered_) heldDataset_ = nullptr;
  return registered_;
}

bool NetSNMPDataSetTableNode::ValidateRow(
    const std::vector<NetSNMPNodeData*>& values) const {
  if (values.size() != columnTemplate_.size()) return false;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const NetSNMPNodeData* const column = columnTemplate_[i];
    if (values[i] == nullptr || column == nullptr ||
        values[i]->dataType_ != column->dataType_) {
      return false;
    }
  }
  return true;
}

bool NetSNMPDataSetTableNode::AddRow(
    const std::vector<NetSNMPNodeData*>& values) {
  const NetSNMPAgentGuard guard;
  if (dataset_ == nullptr || !ValidateRow(values) || values.empty()) {
    return false;
  }
  netsnmp_table_row* row = nullptr;
  NetSNMP::create_snmp_dataset_row(&row);
  if (row == nullptr) return false;
  WriteIndex(row, *values.front());
  for (std::size_t i = 1; i < values.size(); ++i) WriteColumn(row, *values[i]);
  NetSNMP::add_snmp_dataset_row(row, dataset_);
  // A duplicate index, for one.
  if (!DataSetHasRow(*dataset_, *row)) ReleaseDataSetRow(row);
  return true;
}

void NetSNMPDataSetTableNode::CreateDataset() {
  ReleaseDataset();
  NetSNMP::create_snmp_dataset(&dataset_, nodeName_.c_str(), 1,
                               columnTemplate_.front()->NodeASNDataType());
  if (dataset_ == nullptr) return;
  for (std::size_t i = 1; i < columnTemplate_.size(); ++i) {
    const NetSNMPNodeData* const column = columnTemplate_[i];
    if (column == nullptr) continue;
    NetSNMP::define_snmp_dataset_column(
        dataset_, static_cast<unsigned int>(i) + 1, column->NodeASNDataType(),
        column->NodeWritable());
  }
}

void NetSNMPDataSetTableNode::ReleaseDataset() {
  // One that is registered stays with the agent library, which refers to it.
  if (dataset_ != nullptr && dataset_ != heldDataset_) ReleaseDataSet(dataset_);
  dataset_ = nullptr;
}

int var_dataset_table_handler(netsnmp_mib_handler_s* /*handler*/,
                              netsnmp_handler_registration_s* registration,
                              netsnmp_agent_request_info_s* requestInfo,
                              netsnmp_request_info_s* requests) {
  const NetSNMPAgentGuard guard;
  if (registration == nullptr || requests == nullptr ||
      requestInfo->mode != MODE_SET_RESERVE1) {
    return SNMP_ERR_NOERROR;
  }
  auto* const set = static_cast<netsnmp_table_data_set*>(
      netsnmp_find_handler_data_by_name(registration, TABLE_DATA_SET_NAME));
  if (set != nullptr && !late_rows::Hold(requests, set)) {
    NetSNMP::set_snmp_request_error(requestInfo, requests,
                                    SNMP_ERR_RESOURCEUNAVAILABLE);
  }
  return SNMP_ERR_NOERROR;
}
