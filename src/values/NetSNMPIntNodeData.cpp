// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPIntNodeData.h"

#include "NetSNMP.h"
#include "values/LocalValue.h"

NetSNMPIntNodeData::NetSNMPIntNodeData(int* storage, eNodeAccessMode mode,
                                       bool copyLocal, NetSNMPDataNode* owner,
                                       bool tableData)
    : NetSNMPNodeData(eNodeDataInt, mode, tableData ? nullptr : storage,
                      owner) {
  tableData_ = tableData;
  if (copyLocal && storage != nullptr) {
    NetSNMPIntNodeData::CopyLocalData(*storage);
  }
}

NetSNMPIntNodeData::NetSNMPIntNodeData(const NetSNMPIntNodeData& source)
    : NetSNMPNodeData(eNodeDataInt, eNodeAccessDefault, nullptr, nullptr) {
  NetSNMPIntNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPIntNodeData::Clone() const {
  return new NetSNMPIntNodeData(*this);
}

NetSNMPIntNodeData::~NetSNMPIntNodeData() {
  NetSNMPIntNodeData::DeleteLocalData();
}

void NetSNMPIntNodeData::CopyData(const NetSNMPNodeData& source) {
  local_value::Copy<int>(*this, source);
  NetSNMPNodeData::CopyData(source);
}

void NetSNMPIntNodeData::NodeDataValue(int value, bool notify) {
  auto* const storage = static_cast<int*>(StorageOf(eNodeDataInt));
  if (localData_ != nullptr) {
    CopyLocalData(value);
  } else if (storage != nullptr) {
    *storage = value;
  }
  ValueSet(notify);
}

const unsigned char* NetSNMPIntNodeData::NodeByteValue() const {
  return static_cast<const unsigned char*>(StorageOf(eNodeDataInt));
}

unsigned int NetSNMPIntNodeData::NodeValueSize() const { return sizeof(int); }

unsigned char NetSNMPIntNodeData::NodeASNDataType() const {
  return ASN_INTEGER;
}

void NetSNMPIntNodeData::DeleteLocalData() {
  local_value::Delete<int>(*this);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPIntNodeData::CopyLocalData(int value) {
  local_value::Replace<int>(*this, eNodeDataInt, value);
}

void* NetSNMPIntNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}
