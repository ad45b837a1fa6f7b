// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelection.h"

#include <algorithm>
#include <utility>

#include "tables/RowKey.h"
#include "tables/RowLookup.h"

namespace {

std::size_t IndexCount(const RowSelection::Row& row) {
  return static_cast<std::size_t>(
      std::count_if(row.begin(), row.end(), [](const NetSNMPNodeData* value) {
        return value != nullptr && value->isIndex_;
      }));
}

}  // namespace

RowSelection::RowSelection(NetSNMPTableEntryNode& store) : store_(&store) {}

RowSelection::~RowSelection() {
  if (active_ && store_ != nullptr) RowLookup::Of(*store_).selection = outer_;
}

Lookup RowSelection::AddVolatile() {
  const RowIndex& index = RowLookup::Of(*store_).index;
  Rows& rows = store_->rows_;
  if (!index.Covers(rows)) return Lookup::kWalkAll;
  for (const std::string& key : index.Volatile()) {
    const auto place = rows.find(key);
    // The hooks write only the indexes that a row has: one that has lost an
    // index keeps that of the row before it, which must be the one of a walk
    // over all rows.
    if (place == rows.end() || place->second == nullptr ||
        IndexCount(*place->second) < store_->indexTemplate_.size()) {
      return Lookup::kWalkAll;
    }
    selected_.push_back(place);
  }
  return selected_.empty() ? Lookup::kExact : Lookup::kCandidates;
}

Lookup RowSelection::AddExact(netsnmp_request_info_s* request,
                              RowIndex::OidView oid) {
  const auto& indexed = RowLookup::Of(*store_).index.Indexed();
  const auto found = indexed.find(oid);
  return found == indexed.end() ? Lookup::kCandidates
                                : AddMatch(request, *found);
}

Lookup RowSelection::AddNext(netsnmp_request_info_s* request,
                             RowIndex::OidView oid) {
  const auto& indexed = RowLookup::Of(*store_).index.Indexed();
  const auto next = indexed.upper_bound(oid);
  return next == indexed.end() ? AddFirst() : AddMatch(request, *next);
}

Lookup RowSelection::AddFirst() {
  const auto& indexed = RowLookup::Of(*store_).index.Indexed();
  return indexed.empty() || Add(*indexed.begin()) != store_->rows_.end()
             ? Lookup::kCandidates
             : Lookup::kWalkAll;
}

Lookup RowSelection::AddMatch(
    netsnmp_request_info_s* request,
    const RowIndex::IndexedRows::value_type& indexed) {
  const auto place = Add(indexed);
  if (place == store_->rows_.end()) return Lookup::kWalkAll;
  if (!RowLookup::Of(*store_).index.Volatile().empty()) {
    return Lookup::kCandidates;
  }
  matches_.push_back({request, &indexed.first, place});
  return Lookup::kExact;
}

// Returns the end of the rows if the indexed row is no longer stored under its
// key: the application has changed `rows_` directly.
RowSelection::Rows::iterator RowSelection::Add(
    const RowIndex::IndexedRows::value_type& indexed) {
  Rows& rows = store_->rows_;
  const auto place = rows.find(row_key::Of(store_->rowNamePrefix_, indexed));
  if (place == rows.end() || place->second != indexed.second.row) {
    return rows.end();
  }
  if (std::find(selected_.begin(), selected_.end(), place) == selected_.end()) {
    selected_.push_back(place);
  }
  return place;
}

void RowSelection::Activate(Lookup lookup) {
  walksAll_ = lookup == Lookup::kWalkAll;
  if (walksAll_) {
    matches_.clear();
    selected_.clear();
  }
  std::sort(selected_.begin(), selected_.end(),
            [](const Rows::iterator& a, const Rows::iterator& b) {
              return a->first < b->first;
            });
  outer_ = std::exchange(RowLookup::Of(*store_).selection, this);
  active_ = true;
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
  store_->rowCursor_ = atEnd ? store_->rows_.end() : selected_[position_];
  return atEnd ? nullptr : selected_[position_]->second;
}

void RowSelection::EndWalk(bool isGet) {
  store_->rowCursor_ =
      isGet && !selected_.empty() ? selected_.back() : store_->rows_.end();
}

const RowSelection::Rows::value_type* RowSelection::EntryOf(
    const netsnmp_request_info_s* request, const Row* row) const {
  for (const Match& match : matches_) {
    if (match.request != request) continue;
    return match.place->second == row ? &*match.place : nullptr;
  }
  for (const Rows::iterator& place : selected_) {
    if (place->second == row) return &*place;
  }
  return nullptr;
}

void RowSelection::Forget(Rows::iterator place) {
  matches_.erase(
      std::remove_if(matches_.begin(), matches_.end(),
                     [&](const Match& match) { return match.place == place; }),
      matches_.end());
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
  store_ = nullptr;
  matches_.clear();
  selected_.clear();
  if (outer_ != nullptr) outer_->ForgetStore();
}
