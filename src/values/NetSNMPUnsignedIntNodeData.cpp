// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPUnsignedIntNodeData.h"

#include "NetSNMP.h"
#include "values/LocalValue.h"

NetSNMPUnsignedIntNodeData::NetSNMPUnsignedIntNodeData(unsigned int* storage,
                                                       eNodeAccessMode mode,
                                                       bool copyLocal,
                                                       NetSNMPDataNode* owner,
                                                       bool tableData)
    : NetSNMPNodeData(eNodeDataUnsignedInt, mode, tableData ? nullptr : storage,
                      owner) {
  tableData_ = tableData;
  if (copyLocal && storage != nullptr) {
    NetSNMPUnsignedIntNodeData::CopyLocalData(*storage);
  }
}

NetSNMPUnsignedIntNodeData::NetSNMPUnsignedIntNodeData(
    const NetSNMPUnsignedIntNodeData& source)
    : NetSNMPNodeData(eNodeDataUnsignedInt, eNodeAccessDefault, nullptr,
                      nullptr) {
  NetSNMPUnsignedIntNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPUnsignedIntNodeData::Clone() const {
  return new NetSNMPUnsignedIntNodeData(*this);
}

NetSNMPUnsignedIntNodeData::~NetSNMPUnsignedIntNodeData() {
  NetSNMPUnsignedIntNodeData::DeleteLocalData();
}

void NetSNMPUnsignedIntNodeData::CopyData(const NetSNMPNodeData& source) {
  local_value::Copy<unsigned int>(*this, source);
  NetSNMPNodeData::CopyData(source);
}

void NetSNMPUnsignedIntNodeData::NodeDataValue(unsigned int value,
                                               bool notify) {
  auto* const storage =
      static_cast<unsigned int*>(StorageOf(eNodeDataUnsignedInt));
  if (localData_ != nullptr) {
    CopyLocalData(value);
  } else if (storage != nullptr) {
    *storage = value;
  }
  ValueSet(notify);
}

const unsigned char* NetSNMPUnsignedIntNodeData::NodeByteValue() const {
  return static_cast<const unsigned char*>(StorageOf(eNodeDataUnsignedInt));
}

unsigned int NetSNMPUnsignedIntNodeData::NodeValueSize() const {
  return sizeof(unsigned int);
}

unsigned char NetSNMPUnsignedIntNodeData::NodeASNDataType() const {
  return ASN_UNSIGNED;
}

void NetSNMPUnsignedIntNodeData::DeleteLocalData() {
  local_value::Delete<unsigned int>(*this);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPUnsignedIntNodeData::CopyLocalData(unsigned int value) {
  local_value::Replace<unsigned int>(*this, eNodeDataUnsignedInt, value);
}

void* NetSNMPUnsignedIntNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}
