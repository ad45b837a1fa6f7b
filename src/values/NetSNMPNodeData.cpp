// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPNodeData.h"

#include "NetSNMP.h"

NetSNMPNodeData::NetSNMPNodeData(eNodeDataType type, eNodeAccessMode mode,
                                 void* storage, NetSNMPDataNode* owner)
    : dataType_(type),
      accessMode_(mode),
      externalData_(storage),
      localData_(nullptr),
      columnNumber_(0),
      ownerNode_(owner),
      tableData_(false),
      isIndex_(false),
      notifyEnabled_(true) {}

NetSNMPNodeData::NetSNMPNodeData(const NetSNMPNodeData& source)
    : NetSNMPNodeData(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr) {
  NetSNMPNodeData::CopyData(source);
}

NetSNMPNodeData* NetSNMPNodeData::Clone() const {
  return new NetSNMPNodeData(*this);
}

NetSNMPNodeData::~NetSNMPNodeData() { NetSNMPNodeData::DeleteLocalData(); }

void NetSNMPNodeData::CopyData(const NetSNMPNodeData& source) {
  dataType_ = source.dataType_;
  accessMode_ = source.accessMode_;
  ownerNode_ = source.ownerNode_;
  columnNumber_ = source.columnNumber_;
  tableData_ = source.tableData_;
  isIndex_ = source.isIndex_;
  externalData_ = source.localData_ == nullptr ? source.externalData_ : nullptr;
  notifyEnabled_ = source.notifyEnabled_;
}

void NetSNMPNodeData::NodeDataValue(int, bool) {}

void NetSNMPNodeData::NodeDataValue(unsigned int, bool) {}

void NetSNMPNodeData::NodeDataValue(bool, bool) {}

void NetSNMPNodeData::NodeDataValue(const std::string&, bool) {}

void NetSNMPNodeData::NodeDataValue(const char*, bool) {}

void NetSNMPNodeData::NodeDataValue(const unsigned char*, unsigned int, bool) {}

const unsigned char* NetSNMPNodeData::NodeByteValue() const { return nullptr; }

unsigned int NetSNMPNodeData::NodeValueSize() const { return 0; }

unsigned char NetSNMPNodeData::NodeASNDataType() const { return ASN_NULL; }

void NetSNMPNodeData::DeleteLocalData() { localData_ = nullptr; }

void* NetSNMPNodeData::NodeDataValue() const {
  return localData_ != nullptr ? localData_ : externalData_;
}

unsigned char NetSNMPNodeData::NodeIndexASNDataType() const {
  switch (dataType_) {
    case eNodeDataInt:
      return ASN_INTEGER;
    case eNodeDataUnsignedInt:
      return ASN_UNSIGNED;
    default:
      return 0;
  }
}

int NetSNMPNodeData::NodeHandlerModes() const {
  switch (accessMode_) {
    case eNodeAccessReadOnly:
      return HANDLER_CAN_RONLY;
    case eNodeAccessReadWrite:
      return HANDLER_CAN_RWRITE;
    case eNodeAccessWriteOnly:
      return HANDLER_CAN_SET_ONLY;
    default:
      return HANDLER_CAN_DEFAULT;
  }
}

bool NetSNMPNodeData::NodeWritable() const {
  return accessMode_ == eNodeAccessReadWrite ||
         accessMode_ == eNodeAccessWriteOnly;
}

void* NetSNMPNodeData::StorageOf(eNodeDataType ownType) const {
  return dataType_ == ownType ? NodeDataValue() : nullptr;
}
