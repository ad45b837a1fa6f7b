// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPStringNodeData.h"

#include "NetSNMP.h"
#include "values/LocalValue.h"

NetSNMPStringNodeData::NetSNMPStringNodeData(std::string* storage,
                                             eNodeAccessMode mode,
                                             bool copyLocal,
                                             NetSNMPDataNode* owner,
                                             bool tableData)
    : NetSNMPNodeData(eNodeDataString, mode, tableData ? nullptr : storage,
                      owner) {
  tableData_ = tableData;
  if (copyLocal && storage != nullptr) {
    NetSNMPStringNodeData::CopyLocalData(*storage);
  }
}

NetSNMPStringNodeData::NetSNMPStringNodeData(
    const NetSNMPStringNodeData& source)
    : NetSNMPNodeData(eNodeDataString, eNodeAccessDefault, nullptr, nullptr) {
  NetSNMPStringNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPStringNodeData::Clone() const {
  return new NetSNMPStringNodeData(*this);
}

NetSNMPStringNodeData::~NetSNMPStringNodeData() {
  NetSNMPStringNodeData::DeleteLocalData();
}

void NetSNMPStringNodeData::CopyData(const NetSNMPNodeData& source) {
  local_value::Copy<std::string>(*this, source);
  NetSNMPNodeData::CopyData(source);
}

void NetSNMPStringNodeData::NodeDataValue(const std::string& value,
                                          bool notify) {
  const bool local = localData_ != nullptr;
  auto* const storage = static_cast<std::string*>(StorageOf(eNodeDataString));
  if (local) {
    CopyLocalData(value);
  } else if (storage != nullptr) {
    *storage = value;
  }
  // Unlike integers, values held locally do not notify.
  ValueSet(notify && !local);
}

const unsigned char* NetSNMPStringNodeData::NodeByteValue() const {
  const auto* const storage =
      static_cast<const std::string*>(StorageOf(eNodeDataString));
  if (storage == nullptr) return nullptr;
  return reinterpret_cast<const unsigned char*>(storage->data());
}

unsigned int NetSNMPStringNodeData::NodeValueSize() const {
  const auto* const storage =
      static_cast<const std::string*>(StorageOf(eNodeDataString));
  return storage == nullptr ? 0 : static_cast<unsigned int>(storage->size());
}

unsigned char NetSNMPStringNodeData::NodeASNDataType() const {
  return ASN_OCTET_STR;
}

void NetSNMPStringNodeData::DeleteLocalData() {
  local_value::Delete<std::string>(*this);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPStringNodeData::CopyLocalData(const std::string& value) {
  local_value::Replace<std::string>(*this, eNodeDataString, value);
}

void* NetSNMPStringNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}
