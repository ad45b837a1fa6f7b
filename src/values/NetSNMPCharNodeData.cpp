// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPCharNodeData.h"

#include <cstring>
#include <memory>

#include "NetSNMP.h"

NetSNMPCharNodeData::NetSNMPCharNodeData(char* storage, eNodeAccessMode mode,
                                         bool copyLocal, NetSNMPDataNode* owner,
                                         bool tableData)
    : NetSNMPNodeData(eNodeDataChar, mode, tableData ? nullptr : storage,
                      owner) {
  tableData_ = tableData;
  if (copyLocal) NetSNMPCharNodeData::CopyLocalData(storage);
}

NetSNMPCharNodeData::NetSNMPCharNodeData(const NetSNMPCharNodeData& source)
    : NetSNMPNodeData(eNodeDataChar, eNodeAccessDefault, nullptr, nullptr) {
  NetSNMPCharNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPCharNodeData::Clone() const {
  return new NetSNMPCharNodeData(*this);
}

NetSNMPCharNodeData::~NetSNMPCharNodeData() {
  NetSNMPCharNodeData::DeleteLocalData();
}

void NetSNMPCharNodeData::CopyData(const NetSNMPNodeData& source) {
  if (dynamic_cast<const NetSNMPCharNodeData*>(&source) == nullptr) {
    if (source.dataType_ != dataType_) DeleteLocalData();
  } else if (source.localData_ != nullptr) {
    CopyLocalData(static_cast<const char*>(source.localData_));
  }
  NetSNMPNodeData::CopyData(source);
}

void NetSNMPCharNodeData::NodeDataValue(const char* value, bool notify) {
  const bool local = localData_ != nullptr;
  auto* const storage = static_cast<char*>(StorageOf(eNodeDataChar));
  if (value != nullptr) {
    if (local || (storage == nullptr && *value != '\0')) {
      // Without storage, copy the text: otherwise the object could never be
      // written again after a SET of "".
      CopyLocalData(value);
    } else if (storage != nullptr) {
      std::memmove(storage, value, std::strlen(value) + 1);
    }
  }
  ValueSet(notify && !local);
}

const unsigned char* NetSNMPCharNodeData::NodeByteValue() const {
  return static_cast<const unsigned char*>(StorageOf(eNodeDataChar));
}

unsigned int NetSNMPCharNodeData::NodeValueSize() const {
  const auto* const storage =
      static_cast<const char*>(StorageOf(eNodeDataChar));
  return storage == nullptr ? 0
                            : static_cast<unsigned int>(std::strlen(storage));
}

unsigned char NetSNMPCharNodeData::NodeASNDataType() const {
  return ASN_OCTET_STR;
}

void NetSNMPCharNodeData::DeleteLocalData() {
  delete[] static_cast<char*>(localData_);
  NetSNMPNodeData::DeleteLocalData();
}

void NetSNMPCharNodeData::CopyLocalData(const char* value) {
  if (value == nullptr) return;
  // Copied before the old text is freed: `value` may be part of it.
  const std::size_t size = std::strlen(value) + 1;
  std::unique_ptr<char[]> copy(size > 1 ? new char[size] : nullptr);
  if (copy != nullptr) std::memcpy(copy.get(), value, size);
  DeleteLocalData();
  localData_ = copy.release();
  dataType_ = eNodeDataChar;
}

void* NetSNMPCharNodeData::NodeDataValue() const {
  return NetSNMPNodeData::NodeDataValue();
}
