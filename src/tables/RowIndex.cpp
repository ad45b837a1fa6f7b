// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowIndex.h"

#include "NetSNMP.h"
#include "NetSNMPNodeData.h"
#include "values/LibraryValue.h"

namespace {

bool IsPlainInteger(const NetSNMPNodeData& value) {
  return (value.dataType_ == eNodeDataInt ||
          value.dataType_ == eNodeDataUnsignedInt) &&
         IsLibraryValue(value);
}

// The sub-identifier that the agent library makes of the number: the type is
// that of the table's index, not that of the row's value.
unsigned long SubIdentifier(const void* number, unsigned char indexType) {
  if (indexType == ASN_INTEGER) {
    return static_cast<unsigned long>(*static_cast<const int*>(number));
  }
  return *static_cast<const unsigned int*>(number);
}

}  // namespace

RowIndex::RowIndex(const Row& indexTemplate) : indexTemplate_(indexTemplate) {}

void RowIndex::Filed(const std::string& key, const Row& row) {
  Oid oid;
  Place place = {&row, 0};
  bool floating = false;
  if (Order(row, oid, place, floating) &&
      ordered_.emplace(std::move(oid), place).second) {
    return;
  }
  (floating ? floating_ : irregular_).insert(key);
}

void RowIndex::Leaving(const std::string& key, const Row& row) {
  if (floating_.erase(key) == 0 && irregular_.erase(key) == 0) {
    EraseOrdered(row);
  }
}

void RowIndex::HandedOut(const std::string& key, const Row& row) {
  if (floating_.count(key) != 0 || irregular_.count(key) != 0) return;
  // Without memory for it the row is in neither, and not covered.
  EraseOrdered(row);
  floating_.insert(key);
}

bool RowIndex::Covers(const Rows& rows) const {
  return irregular_.empty() &&
         ordered_.size() + floating_.size() == rows.size();
}

bool RowIndex::Order(const Row& row, Oid& oid, Place& place,
                     bool& floating) const {
  bool certain = true;
  for (const NetSNMPNodeData* value : row) {
    if (value == nullptr || !value->isIndex_) continue;
    const std::size_t position = oid.size();
    if (position == indexTemplate_.size() || position == 64) return false;
    const NetSNMPNodeData* const index = indexTemplate_[position];
    const unsigned char type =
        index == nullptr ? 0 : index->NodeIndexASNDataType();
    if (type == 0 || !IsPlainInteger(*value)) return false;
    if (value->NodeDataValue() == nullptr) return false;
    if (value->dataType_ == eNodeDataInt) {
      place.signedIndexes |= std::uint64_t{1} << position;
    }
    // Variables of the application are not read: they may be gone before their
    // row is.
    const void* const number = value->localData_;
    certain = certain && number != nullptr;
    oid.push_back(number == nullptr ? 0 : SubIdentifier(number, type));
  }
  const bool complete = oid.size() == indexTemplate_.size();
  floating = complete && !certain;
  return complete && certain;
}

void RowIndex::EraseOrdered(const Row& row) {
  Oid oid;
  Place place = {&row, 0};
  bool floating = false;
  Order(row, oid, place, floating);
  auto entry = ordered_.find(oid);
  if (entry == ordered_.end() || entry->second.row != &row) {
    // Changed by somebody who was never given it.
    entry = std::find_if(ordered_.begin(), ordered_.end(),
                         [&](const auto& e) { return e.second.row == &row; });
  }
  if (entry != ordered_.end()) ordered_.erase(entry);
}
