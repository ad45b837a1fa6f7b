// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPByteNodeData.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "NetSNMP.h"

NetSNMPByteNodeData::NetSNMPByteNodeData(unsigned char* storage,
                                         unsigned int size,
                                         eNodeAccessMode mode, bool copyLocal,
                                         NetSNMPDataNode* owner, bool tableData)
    : NetSNMPNodeData(eNodeDataByte, mode, tableData ? nullptr : storage,
                      owner),
      dataSize_(size) {
  tableData_ = tableData;
  if (copyLocal) NetSNMPByteNodeData::CopyLocalData(storage);
}

NetSNMPByteNodeData::NetSNMPByteNodeData(const NetSNMPByteNodeData& source)
    : NetSNMPNodeData(eNodeDataByte, eNodeAccessDefault, nullptr, nullptr),
      dataSize_(0) {
  NetSNMPByteNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPByteNodeData::Clone() const {
  return new NetSNMPByteNodeData(*this);
}

NetSNMPByteNodeData::~NetSNMPByteNodeData() {
  NetSNMPByteNodeData::DeleteLocalData();
}

void NetSNMPByteNodeData::CopyData(const NetSNMPNodeData& source) {
  const unsigned int oldSize = dataSize_;
  dataSize_ = source.NodeValueSize();
  if (dynamic_cast<const NetSNMPByteNodeData*>(&source) == nullptr) {
    DeleteLocalData();
  } else if (source.localData_ != nullptr) {
    CopyLocalData(static_cast<const unsigned char*>(source.localData_));
  } else if (localData_ != nullptr && oldSize != dataSize_) {
    ResizeLocalData(oldSize);
  }
  NetSNMPNodeData::CopyData(source);
}

const unsigned char* NetSNMPByteNodeData::NodeByteValue() const {
  return static_cast<const unsigned char*>(StorageOf(eNodeDataByte));
}

unsigned int NetSNMPByteNodeData::NodeValueSize() const { return dataSize_; }

unsigned char NetSNMPByteNodeData::NodeASNDataType() const {
  return ASN_OCTET_STR;
}

void NetSNMPByteNodeData::DeleteLocalData() {
  delete[] static_cast<unsigned char*>(localData_);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPByteNodeData::NodeDataValue(const unsigned char* value,
                                        bool notify) {
  const bool local = localData_ != nullptr;
  void* const storage = StorageOf(eNodeDataByte);
  if (local) {
    CopyLocalData(value);
  } else if (storage != nullptr && value != nullptr) {
    std::memmove(storage, value, dataSize_);
  }
  ValueSet(notify && !local);
}

void NetSNMPByteNodeData::CopyLocalData(const unsigned char* value) {
  if (value == nullptr) return;
  // Copied before the old bytes are freed: `value` may be part of them.
  std::unique_ptr<unsigned char[]> copy(
      dataSize_ > 0 ? new unsigned char[dataSize_] : nullptr);
  if (copy != nullptr) std::memcpy(copy.get(), value, dataSize_);
  DeleteLocalData();
  localData_ = copy.release();
  dataType_ = eNodeDataByte;
}

void* NetSNMPByteNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}

void NetSNMPByteNodeData::ResizeLocalData(unsigned int oldSize) {
  std::unique_ptr<unsigned char[]> bytes(new unsigned char[dataSize_]());
  std::memcpy(bytes.get(), localData_, std::min(oldSize, dataSize_));
  CopyLocalData(bytes.get());
}
