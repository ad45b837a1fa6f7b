// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelection.h"

#include <algorithm>

#include "NetSNMPTableEntryNode.h"
#include "tables/RowKey.h"

namespace {

// The key of an ordered row, made as the store made it.
std::string KeyMadeOf(const RowIndex::Ordered::value_type& ordered,
                      const std::string& prefix) {
  std::string key;
  key.reserve(prefix.size() + kIndexTextSize * ordered.first.size());
  key = prefix;
  std::uint64_t signedIndexes = ordered.second.signedIndexes;
  for (const unsigned long subId : ordered.first) {
    if ((signedIndexes & 1) != 0) {
      AppendIndexNumber(static_cast<int>(subId), key);
    } else {
      AppendIndexNumber(static_cast<unsigned int>(subId), key);
    }
    signedIndexes >>= 1;
  }
  return key;
}

std::size_t IndexCount(const RowSelection::Row& row) {
  return static_cast<std::size_t>(
      std::count_if(row.begin(), row.end(), [](const NetSNMPNodeData* value) {
        return value != nullptr && value->isIndex_;
      }));
}

}  // namespace

RowSelection::RowSelection(NetSNMPTableEntryNode& entry) : entry_(&entry) {}

RowSelection::~RowSelection() {
  if (active_ && entry_ != nullptr) entry_->selection_ = outer_;
}

bool RowSelection::AddFloating() {
  Rows& rows = entry_->rows_;
  if (!entry_->index_->Covers(rows)) return false;
  for (const std::string& key : entry_->index_->FloatingRows()) {
    const auto place = rows.find(key);
    // One that has lost an index since leaves a varbind as the row before it in
    // a walk over all rows left it.
    if (place == rows.end() || place->second == nullptr ||
        IndexCount(*place->second) < entry_->indexTemplate_.size()) {
      return false;
    }
    selected_.push_back(place);
  }
  return true;
}

bool RowSelection::AddExact(const RowIndex::OidView& oid, Choice& choice) {
  const auto& ordered = entry_->index_->OrderedRows();
  const auto found = ordered.find(oid);
  if (found == ordered.end()) return true;
  choice = Certain(found);
  return Add(found);
}

bool RowSelection::AddAfter(const RowIndex::OidView& oid, Choice& choice) {
  const auto& ordered = entry_->index_->OrderedRows();
  const auto next = ordered.upper_bound(oid);
  if (next == ordered.end()) return AddFirst();
  choice = Certain(next);
  return Add(next);
}

bool RowSelection::AddFirst() {
  return Add(entry_->index_->OrderedRows().begin());
}

bool RowSelection::Add(RowIndex::Ordered::const_iterator ordered) {
  if (ordered == entry_->index_->OrderedRows().end()) return true;
  Rows& rows = entry_->rows_;
  const auto place = rows.find(KeyMadeOf(*ordered, entry_->rowNamePrefix_));
  if (place == rows.end() || place->second != ordered->second.row) return false;
  if (!Holds(place->second)) selected_.push_back(place);
  return true;
}

void RowSelection::Activate() {
  std::sort(selected_.begin(), selected_.end(),
            [](const Rows::iterator& a, const Rows::iterator& b) {
              return a->first < b->first;
            });
  outer_ = entry_->selection_;
  entry_->selection_ = this;
  active_ = true;
}

RowSelection::Choice RowSelection::Certain(
    RowIndex::Ordered::const_iterator ordered) const {
  return entry_->index_->FloatingRows().empty() ? &*ordered : nullptr;
}

void RowSelection::EndWalk(bool foundAll) {
  entry_->rowCursor_ =
      foundAll && !selected_.empty() ? selected_.back() : entry_->rows_.end();
}

RowSelection::Row* RowSelection::First() {
  position_ = 0;
  return Current();
}

RowSelection::Row* RowSelection::Next() {
  if (position_ < selected_.size()) ++position_;
  return Current();
}

RowSelection::Row* RowSelection::Current() {
  const bool atEnd = position_ == selected_.size();
  entry_->rowCursor_ = atEnd ? entry_->rows_.end() : selected_[position_];
  return atEnd ? nullptr : selected_[position_]->second;
}

bool RowSelection::Holds(const Row* row) const {
  return std::any_of(
      selected_.begin(), selected_.end(),
      [&](const Rows::iterator& place) { return place->second == row; });
}

const std::string* RowSelection::KeyOf(const Row* row) const {
  for (const Rows::iterator& place : selected_) {
    if (place->second != row) continue;
    return entry_->index_->FloatingRows().empty() ? &place->first : nullptr;
  }
  return nullptr;
}

void RowSelection::Forget(Rows::iterator place) {
  const auto found = std::find(selected_.begin(), selected_.end(), place);
  if (found != selected_.end()) {
    const auto position = static_cast<std::size_t>(found - selected_.begin());
    selected_.erase(found);
    // As the store's own cursor, one that stood there is past the end.
    if (position < position_) {
      --position_;
    } else if (position == position_) {
      position_ = selected_.size();
    }
  }
  if (outer_ != nullptr) outer_->Forget(place);
}

void RowSelection::ForgetStore() {
  entry_ = nullptr;
  selected_.clear();
  if (outer_ != nullptr) outer_->ForgetStore();
}
