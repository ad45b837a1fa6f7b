// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowKey.h"

#include <charconv>
#include <cstddef>

#include "NetSNMPNodeData.h"

namespace {

// The longest text of an index: "." and at most ten digits and a sign.
constexpr std::size_t kIndexTextSize = 12;

void StartKey(const std::string& prefix, std::size_t indexCount,
              std::string& key) {
  key.clear();
  key.reserve(prefix.size() + kIndexTextSize * indexCount);
  key = prefix;
}

template <typename Number>
void AppendNumber(Number number, std::string& key) {
  char text[kIndexTextSize] = {'.'};
  key.append(text, std::to_chars(text + 1, text + sizeof text, number).ptr);
}

// Appends an index value; false, with `key` unchanged, if `value` is not an
// integer index.
bool AppendIndex(const NetSNMPNodeData& value, std::string& key) {
  const void* const number = value.NodeDataValue();
  if (!value.isIndex_ || number == nullptr) return false;
  switch (value.dataType_) {
    case eNodeDataInt:
      AppendNumber(*static_cast<const int*>(number), key);
      return true;
    case eNodeDataUnsignedInt:
      AppendNumber(*static_cast<const unsigned int*>(number), key);
      return true;
    default:
      return false;
  }
}

}  // namespace

int row_key::Write(const std::string& prefix, const RowIndex::Row& values,
                   std::string& key) {
  StartKey(prefix, values.size(), key);
  int indexCount = 0;
  for (const NetSNMPNodeData* value : values) {
    if (value != nullptr && AppendIndex(*value, key)) ++indexCount;
  }
  return indexCount;
}

std::string row_key::Of(const std::string& prefix,
                        const RowIndex::IndexedRows::value_type& indexed) {
  const auto& [oid, place] = indexed;
  std::string key;
  StartKey(prefix, oid.size(), key);
  std::uint64_t signedIndexes = place.signedIndexes;
  for (const unsigned long subId : oid) {
    if ((signedIndexes & 1) != 0) {
      AppendNumber(static_cast<int>(subId), key);
    } else {
      AppendNumber(static_cast<unsigned int>(subId), key);
    }
    signedIndexes >>= 1;
  }
  return key;
}
