// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPNodeData.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "NetSNMP.h"

namespace {

// Numbers look the same in every locale that the application may set.
std::ostringstream PlainStream() {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  return stream;
}

std::string AddressText(const void* address) {
  std::ostringstream stream = PlainStream();
  stream << address;
  return stream.str();
}

std::string HexText(const unsigned char* bytes, unsigned int size) {
  std::ostringstream stream = PlainStream();
  stream << std::hex << std::setfill('0');
  for (unsigned int i = 0; i < size; ++i) {
    stream << std::setw(2) << static_cast<unsigned int>(bytes[i]);
  }
  return stream.str();
}

}  // namespace

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

std::string NetSNMPNodeData::NodeDataToString() const {
  const void* const storage = NodeDataValue();
  if (dataType_ == eNodeDataVoid) return "void";
  // The address, not the number: readers of the log identify values by it.
  if (dataType_ == eNodeDataUnsignedInt) return AddressText(storage);
  if (storage == nullptr) return "";
  switch (dataType_) {
    case eNodeDataInt:
      return std::to_string(*static_cast<const int*>(storage));
    case eNodeDataString:
      return *static_cast<const std::string*>(storage);
    case eNodeDataChar:
      return static_cast<const char*>(storage);
    case eNodeDataBool:
      return *static_cast<const bool*>(storage) ? "true" : "false";
    case eNodeDataByte:
      return HexText(static_cast<const unsigned char*>(storage),
                     NodeValueSize());
    default:
      return "";
  }
}

void* NetSNMPNodeData::StorageOf(eNodeDataType ownType) const {
  return dataType_ == ownType ? NodeDataValue() : nullptr;
}
