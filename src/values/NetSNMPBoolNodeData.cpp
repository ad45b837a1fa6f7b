// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPBoolNodeData.h"

#include "NetSNMP.h"
#include "values/LocalValue.h"
#include "values/TruthValue.h"

NetSNMPBoolNodeData::NetSNMPBoolNodeData(bool* storage, eNodeAccessMode mode,
                                         bool copyLocal, NetSNMPDataNode* owner,
                                         bool tableData)
    : NetSNMPNodeData(eNodeDataBool, mode, tableData ? nullptr : storage,
                      owner) {
  tableData_ = tableData;
  if (copyLocal && storage != nullptr) {
    NetSNMPBoolNodeData::CopyLocalData(*storage);
  }
}

NetSNMPBoolNodeData::NetSNMPBoolNodeData(const NetSNMPBoolNodeData& source)
    : NetSNMPNodeData(eNodeDataBool, eNodeAccessDefault, nullptr, nullptr) {
  NetSNMPBoolNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPBoolNodeData::Clone() const {
  return new NetSNMPBoolNodeData(*this);
}

NetSNMPBoolNodeData::~NetSNMPBoolNodeData() {
  NetSNMPBoolNodeData::DeleteLocalData();
}

void NetSNMPBoolNodeData::CopyData(const NetSNMPNodeData& source) {
  local_value::Copy<bool>(*this, source);
  NetSNMPNodeData::CopyData(source);
}

void NetSNMPBoolNodeData::NodeDataValue(bool value, bool notify) {
  const bool local = localData_ != nullptr;
  auto* const storage = static_cast<bool*>(StorageOf(eNodeDataBool));
  if (local) {
    CopyLocalData(value);
  } else if (storage != nullptr) {
    *storage = value;
  }
  // Unlike integers, values held locally do not notify.
  ValueSet(notify && !local);
}

const unsigned char* NetSNMPBoolNodeData::NodeByteValue() const {
  const auto* const storage =
      static_cast<const bool*>(StorageOf(eNodeDataBool));
  return storage == nullptr ? nullptr : truth_value::Bytes(*storage);
}

unsigned int NetSNMPBoolNodeData::NodeValueSize() const {
  return truth_value::kSize;
}

unsigned char NetSNMPBoolNodeData::NodeASNDataType() const {
  return ASN_INTEGER;
}

void NetSNMPBoolNodeData::DeleteLocalData() {
  local_value::Delete<bool>(*this);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPBoolNodeData::CopyLocalData(bool value) {
  local_value::Replace<bool>(*this, eNodeDataBool, value);
}

void* NetSNMPBoolNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}
