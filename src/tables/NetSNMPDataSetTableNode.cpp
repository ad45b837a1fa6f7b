// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataSetTableNode.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "adapter/DataSet.h"
#include "adapter/Deferred.h"
#include "adapter/InUse.h"
#include "adapter/Registration.h"
#include "nodes/NodeRegistration.h"
#include "nodes/Watch.h"
#include "values/ClonedValues.h"

namespace {

// The column that every value behind the index overwrites: a row of the dataset
// shows its last value.
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
    // In braces, so that the guard comes before the copies.
    : NetSNMPDataSetTableNode{NetSNMPAgentGuard(),
                              oid,
                              oidLen,
                              name,
                              NetSNMPNodeData(accessData),
                              ClonedValues(columns).Get()} {}

NetSNMPDataSetTableNode::NetSNMPDataSetTableNode(
    const NetSNMPAgentGuard&, unsigned long* oid, unsigned int oidLen,
    const std::string& name, const NetSNMPNodeData& accessData,
    const std::vector<NetSNMPNodeData*>& columns)
    : NetSNMPNode(oid, oidLen, name),
      dataset_(nullptr),
      accessData_(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr),
      registration_(nullptr) {
  accessData_.CopyData(accessData);
  NetSNMPNodeData::CopyDataVector(columns, columnTemplate_);
  NetSNMPDataSetTableNode::RegisterNode();
}

NetSNMPDataSetTableNode::~NetSNMPDataSetTableNode() {
  const NetSNMPAgentGuard guard;
  NetSNMPNodeData::DestroyDataVector(columnTemplate_);
  const bool registered =
      registration::IsRegistered(registration_, nodeOID_, nodeOIDLen_);
  if (dataset_ != nullptr) {
    deferred::ClearDataSet(dataset_, registered ? registration_ : nullptr);
  }
  ReleaseDataset();
  LeaveRegistry();
}

bool NetSNMPDataSetTableNode::RegisterNode() {
  const NetSNMPAgentGuard guard;
  if (registered_ || !mapped_ || !SubAgentConnected()) return registered_;
  if (columnTemplate_.empty() || columnTemplate_.front() == nullptr) {
    return registered_;
  }
  if (node_registration::MustWait(*this)) return registered_;
  CreateDataset();
  if (dataset_ == nullptr) return registered_;
  netsnmp_handler_registration* registration = nullptr;
  const int created = NetSNMP::create_snmp_handler_registration(
      &registration, nodeName_.c_str(), var_dataset_table_handler, nodeOID_,
      nodeOIDLen_, accessData_.NodeHandlerModes());
  if (NetSNMP::snmp_succeeded(created) == 0) return false;
  registered_ = true;
  registration_ = registration;
  const Watch watch(this);
  const int result =
      NetSNMP::register_snmp_dataset_table(registration, dataset_);
  // A request served meanwhile may have deleted the node.
  if (!watch.Alive()) return false;
  registered_ = NetSNMP::snmp_succeeded(result) != 0;
  if (registered_) {
    data_set::SetOneByOne(registration);
    in_use::TrackSetsOf(registration);
  } else {
    registration_ = nullptr;
  }
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
  if (!data_set::HasRow(*dataset_, *row)) data_set::FreeRow(row);
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
  if (dataset_ != nullptr && registration_ == nullptr) data_set::Free(dataset_);
  dataset_ = nullptr;
}

int var_dataset_table_handler(netsnmp_mib_handler_s* /*handler*/,
                              netsnmp_handler_registration_s* registration,
                              netsnmp_agent_request_info_s* requestInfo,
                              netsnmp_request_info_s* requests) {
  const NetSNMPAgentGuard guard;
  if (registration != nullptr && requests != nullptr) {
    // Refuses the requests by itself.
    in_use::TrackSet(requestInfo, requests, registration);
  }
  return SNMP_ERR_NOERROR;
}
