// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <iomanip>
#include <locale>
#include <sstream>

#include "NetSNMPNodeData.h"

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
