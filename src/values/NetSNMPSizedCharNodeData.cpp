// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPSizedCharNodeData.h"

#include <cstring>

NetSNMPSizedCharNodeData::NetSNMPSizedCharNodeData(
    char* storage, unsigned int size, eNodeAccessMode mode, bool copyLocal,
    NetSNMPDataNode* owner, bool tableData)
    : NetSNMPCharNodeData(storage, mode, false, owner, tableData),
      bufferSize_(size) {
  if (copyLocal) NetSNMPSizedCharNodeData::CopyLocalData(storage);
}

NetSNMPSizedCharNodeData::NetSNMPSizedCharNodeData(
    const NetSNMPSizedCharNodeData& source)
    : NetSNMPCharNodeData(nullptr, eNodeAccessDefault), bufferSize_(0) {
  NetSNMPSizedCharNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPSizedCharNodeData::Clone() const {
  return new NetSNMPSizedCharNodeData(*this);
}

void NetSNMPSizedCharNodeData::CopyData(const NetSNMPNodeData& source) {
  const auto* const sized =
      dynamic_cast<const NetSNMPSizedCharNodeData*>(&source);
  if (sized != nullptr) {
    bufferSize_ = sized->bufferSize_;
    NetSNMPCharNodeData::CopyData(source);
  } else {
    bufferSize_ = 0;
    DeleteLocalData();
    NetSNMPNodeData::CopyData(source);
  }
}

void NetSNMPSizedCharNodeData::NodeDataValue(const char* value, bool notify) {
  if (value == nullptr || Fits(std::strlen(value))) {
    NetSNMPCharNodeData::NodeDataValue(value, notify);
  } else {
    NodeDataLogMessage("data value too long.");
  }
}

void NetSNMPSizedCharNodeData::CopyLocalData(const char* value) {
  if (value != nullptr && Fits(std::strlen(value))) {
    NetSNMPCharNodeData::CopyLocalData(value);
  }
}

bool NetSNMPSizedCharNodeData::Fits(std::size_t length) const {
  return length < bufferSize_;
}
