// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowIndex.h"

#include "NetSNMP.h"
#include "NetSNMPNodeData.h"
#include "values/BuiltInValue.h"

namespace {

constexpr std::size_t kMostIndexes = 64;  // the bits of Place::signedIndexes

bool IsPlainInteger(const NetSNMPNodeData& value) {
  return (value.dataType_ == eNodeDataInt ||
          value.dataType_ == eNodeDataUnsignedInt) &&
         IsBuiltInValue(value);
}

// The sub-identifier that the agent library computes from the number. The type
// is that of the table's index, not that of the row's value.
unsigned long SubIdentifier(const void* number, unsigned char indexType) {
  if (indexType == ASN_INTEGER) {
    return static_cast<unsigned long>(*static_cast<const int*>(number));
  }
  return *static_cast<const unsigned int*>(number);
}

}  // namespace

RowIndex::RowIndex(const Row& indexTemplate) : indexTemplate_(indexTemplate) {}

void RowIndex::Add(const std::string& key, const Row& row) {
  Oid oid;
  Place place = {&row, 0};
  const Kind kind = Classify(row, oid, place);
  if (kind == Kind::kIndexed &&
      indexed_.emplace(std::move(oid), place).second) {
    return;
  }
  (kind == Kind::kVolatile ? volatile_ : unindexable_).insert(key);
}

void RowIndex::Remove(const std::string& key, const Row& row) {
  if (volatile_.erase(key) == 0 && unindexable_.erase(key) == 0) {
    RemoveIndexed(row);
  }
}

void RowIndex::MakeVolatile(const std::string& key, const Row& row) {
  if (volatile_.count(key) != 0 || unindexable_.count(key) != 0) return;
  // If there is no memory for the key, the row is in no set and not covered.
  RemoveIndexed(row);
  volatile_.insert(key);
}

bool RowIndex::Covers(const Rows& rows) const {
  return unindexable_.empty() &&
         indexed_.size() + volatile_.size() == rows.size();
}

RowIndex::Kind RowIndex::Classify(const Row& row, Oid& oid,
                                  Place& place) const {
  Kind kind = Kind::kIndexed;
  for (const NetSNMPNodeData* value : row) {
    if (value == nullptr || !value->isIndex_) continue;
    const std::size_t position = oid.size();
    if (position == indexTemplate_.size() || position == kMostIndexes) {
      return Kind::kUnindexable;
    }
    const NetSNMPNodeData* const index = indexTemplate_[position];
    const unsigned char type =
        index == nullptr ? 0 : index->NodeIndexASNDataType();
    if (type == 0 || !IsPlainInteger(*value) ||
        value->NodeDataValue() == nullptr) {
      return Kind::kUnindexable;
    }
    if (value->dataType_ == eNodeDataInt) {
      place.signedIndexes |= std::uint64_t{1} << position;
    }
    // A variable of the application is not read: it may not exist any more.
    const void* const number = value->localData_;
    if (number == nullptr) kind = Kind::kVolatile;
    oid.push_back(number == nullptr ? 0 : SubIdentifier(number, type));
  }
  return oid.size() == indexTemplate_.size() ? kind : Kind::kUnindexable;
}

void RowIndex::RemoveIndexed(const Row& row) {
  Oid oid;
  Place place = {&row, 0};
  Classify(row, oid, place);
  auto entry = indexed_.find(oid);
  if (entry == indexed_.end() || entry->second.row != &row) {
    // An index value was changed through a pointer that the store did not give.
    entry = std::find_if(indexed_.begin(), indexed_.end(),
                         [&](const auto& e) { return e.second.row == &row; });
  }
  if (entry != indexed_.end()) indexed_.erase(entry);
}
