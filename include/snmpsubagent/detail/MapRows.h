// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MAPROWS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MAPROWS_H_

#include <chrono>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "snmpsubagent/Index.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/RowChange.h"
#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/RowStore.h"
#include "snmpsubagent/detail/TableState.h"

// The rows of a table, in a container that is ordered by their keys.
namespace snmpsubagent::detail {

// The application's functions of a table. Replaced as a whole, since one of
// them may be running.
template <typename Key, typename Row>
struct RowFunctions {
  using Change = RowChange<Key, Row>;
  std::function<SetError(const Change&)> check;
  std::function<SetError(const Change&)> apply;
  std::function<void(const Change&, Later<SetError>)> applyLater;
  std::function<void(const Change&)> changed;
};

// Where managers see a key of a container, found by sub-identifiers which may
// be those of no key.
template <typename Map, typename = void>
struct IndexedBy {
  using Key = typename Map::key_type;
  static_assert(IsNumberIndex<Key> &&
                    std::is_same_v<typename Map::key_compare, std::less<Key>>,
                "the container has another order than the managers': give it "
                "snmpsubagent::IndexOrder<Key>");

  static auto From(Map& rows, OidView index, bool include) {
    // Keys below 0 have no index.
    if (index.empty()) return rows.lower_bound(Key{});
    if (index[0] >
        static_cast<SubIdentifier>(std::numeric_limits<NumberOf<Key>>::max())) {
      return rows.end();
    }
    const Key key = static_cast<Key>(index[0]);
    return index.size() == 1 && include ? rows.lower_bound(key)
                                        : rows.upper_bound(key);
  }
};
template <typename Map>
struct IndexedBy<
    Map, std::enable_if_t<std::is_same_v<typename Map::key_compare,
                                         IndexOrder<typename Map::key_type>>>> {
  static auto From(Map& rows, OidView index, bool include) {
    return include ? rows.lower_bound(index) : rows.upper_bound(index);
  }
};

template <typename Map>
class MapRows;

// A row that a SET changes, from TestSet to the end.
template <typename Map>
class StagedMapRow final : public StagedRow {
 public:
  using Key = typename Map::key_type;
  using RowType = typename Map::mapped_type;
  using Change = RowChange<Key, RowType>;

  StagedMapRow(std::shared_ptr<TableState> table,
               std::shared_ptr<MapRows<Map>> rows, OidView index, Key key,
               std::optional<RowType> before, RowStatus status)
      : StagedRow(std::move(table), rows, index, status),
        rows_(std::move(rows)),
        key_(std::move(key)),
        before_(std::move(before)),
        after_(before_ ? *before_ : RowType()) {}

  void* Row() override { return &after_; }

 protected:
  SetError AskCheck() override {
    const auto functions = rows_->Functions();
    return functions && functions->check ? functions->check(Forward())
                                         : SetError::None;
  }
  Step CallApply(bool undo, Transaction& transaction) override;
  void CallChanged() override {
    const auto functions = rows_->Functions();
    if (functions && functions->changed) functions->changed(Forward());
  }
  void Store() override {
    if (After() == RowStatus::None) {
      rows_->Erase(key_);
    } else {
      rows_->Put(key_, after_, After());
    }
  }
  void Restore() override {
    if (before_) {
      rows_->Put(key_, *before_, Before());
    } else {
      rows_->Erase(key_);
    }
  }

 private:
  std::optional<RowType> FinalRow() const {
    return After() == RowStatus::None ? std::nullopt
                                      : std::optional<RowType>(after_);
  }
  Change Forward() const {
    return {key_, before_, FinalRow(), Before(), After()};
  }
  Change Backward() const {
    return {key_, FinalRow(), before_, After(), Before()};
  }

  std::shared_ptr<MapRows<Map>> rows_;
  Key key_;
  std::optional<RowType> before_;
  RowType after_;
};

template <typename Map>
class MapRows final : public RowStore,
                      public std::enable_shared_from_this<MapRows<Map>> {
 public:
  using Key = typename Map::key_type;
  using Row = typename Map::mapped_type;
  using Functions_ = RowFunctions<Key, Row>;
  using Loader = std::function<void(Map&)>;

  MapRows() : owned_(std::make_unique<Map>()), rows_(*owned_) {}
  // Rows of the application's, which may change behind our back.
  explicit MapRows(Map& borrowed) : rows_(borrowed) {}

  // The rows as they are, for whoever changes no keys.
  Map& Rows() { return rows_; }

  bool Put(const Key& key, Row row, RowStatus status = RowStatus::Active) {
    const bool isNew = rows_.insert_or_assign(key, std::move(row)).second;
    if (isNew) Forget();
    SetStatus(key, status);
    Note(key);
    return isNew;
  }
  bool Erase(const Key& key) {
    if (rows_.erase(key) == 0) return false;
    Forget();
    status_.erase(key);
    Note(key);
    return true;
  }
  // Tells the SETs that are under way that the application has changed a row.
  void Note(const Key& key) {
    if (Staged().empty()) return;
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    NoteChange(index.View());
  }
  RowStatus StatusOf(const Key& key) const {
    const auto found = status_.find(key);
    return found == status_.end() ? RowStatus::Active : found->second;
  }
  void SetStatus(const Key& key, RowStatus status) {
    if (status != RowStatus::Active) {
      status_.insert_or_assign(key, status);
    } else if (!status_.empty()) {
      status_.erase(key);
    }
  }

  // Makes them those of `rows`, and touches only what differs.
  void Replace(Map rows) {
    for (auto place = rows_.begin(); place != rows_.end();) {
      const auto next = std::next(place);
      if (rows.find(place->first) == rows.end()) Erase(Key(place->first));
      place = next;
    }
    for (auto& [key, row] : rows) Put(key, std::move(row), StatusOf(key));
  }

  void SetLoader(Loader loader, std::chrono::steady_clock::duration time) {
    loader_ = std::move(loader);
    timeToLive_ = time;
    loaded_.reset();
  }

  const std::shared_ptr<const Functions_>& Functions() const {
    return functions_;
  }
  template <typename Edit>
  void EditFunctions(Edit edit) {
    auto changed = functions_ ? std::make_shared<Functions_>(*functions_)
                              : std::make_shared<Functions_>();
    edit(*changed);
    functions_ = std::move(changed);
  }

  std::size_t Size() const override { return rows_.size(); }
  bool IsKey(OidView index) const override {
    return ReadKey<Key>(index).has_value();
  }
  bool Find(OidView index, RowView& found) override {
    Load();
    const auto place = IndexedBy<Map>::From(rows_, index, true);
    if (place == rows_.end() || !Is(place->first, index)) return false;
    Show(*place, found);
    return true;
  }
  bool FindNext(OidView index, bool include, RowView& found,
                IndexWriter& foundIndex) override {
    Load();
    const auto place = PlaceBehind(index, include);
    if (place == rows_.end()) return false;
    foundIndex.Clear();
    IndexSyntax<Key>::Write(foundIndex, place->first);
    Remember(index, include, foundIndex.View(), place);
    Show(*place, found);
    return true;
  }
  std::unique_ptr<StagedRow> Stage(std::shared_ptr<TableState> table,
                                   OidView index) override {
    Key key = *ReadKey<Key>(index);
    std::optional<Row> before;
    RowStatus status = RowStatus::None;
    if (const auto place = rows_.find(key); place != rows_.end()) {
      before = place->second;
      status = StatusOf(key);
    }
    return std::make_unique<StagedMapRow<Map>>(
        std::move(table), this->shared_from_this(), index, std::move(key),
        std::move(before), status);
  }

 private:
  using Place = typename Map::iterator;

  static bool Is(const Key& key, OidView index) {
    IndexWriter written;
    IndexSyntax<Key>::Write(written, key);
    return written.View() == index;
  }
  void Show(const typename Map::value_type& row, RowView& found) const {
    found.key = &row.first;
    found.row = &row.second;
    found.status = status_.empty() ? RowStatus::Active : StatusOf(row.first);
  }

  void Load() {
    if (!loader_ || loading_) return;
    const auto now = std::chrono::steady_clock::now();
    if (loaded_ && now - *loaded_ < timeToLive_) return;
    loading_ = true;
    Map rows;
    try {
      loader_(rows);
    } catch (...) {
      loading_ = false;
      throw;
    }
    loading_ = false;
    loaded_ = std::chrono::steady_clock::now();
    Replace(std::move(rows));
  }

  // A walk asks for the row behind the one that it was given last, and asks for
  // each column the same.
  Place PlaceBehind(OidView index, bool include) {
    if (remembers_ && !include) {
      if (index == ViewOf(lastFound_)) return std::next(place_);
      if (index == ViewOf(lastAsked_)) return place_;
    }
    return IndexedBy<Map>::From(rows_, index, include);
  }
  void Remember(OidView asked, bool include, OidView found, Place place) {
    if (!owned_ || include) return;
    lastAsked_.assign(asked.begin(), asked.end());
    lastFound_.assign(found.begin(), found.end());
    place_ = place;
    remembers_ = true;
  }
  void Forget() { remembers_ = false; }
  static OidView ViewOf(const std::vector<SubIdentifier>& ids) {
    return {ids.data(), ids.size()};
  }

  std::unique_ptr<Map> owned_;
  Map& rows_;
  // Of the rows that are not active.
  std::map<Key, RowStatus, IndexOrder<Key>> status_;
  std::shared_ptr<const Functions_> functions_;

  Loader loader_;
  std::chrono::steady_clock::duration timeToLive_{};
  std::optional<std::chrono::steady_clock::time_point> loaded_;
  bool loading_ = false;

  bool remembers_ = false;
  std::vector<SubIdentifier> lastAsked_;
  std::vector<SubIdentifier> lastFound_;
  Place place_;
};

template <typename Map>
Step StagedMapRow<Map>::CallApply(bool undo, Transaction& transaction) {
  const auto functions = rows_->Functions();
  if (!functions) return Step::Done;
  const Change change = undo ? Backward() : Forward();
  SetError error = SetError::None;
  if (functions->applyLater) {
    functions->applyLater(change, Later<SetError>(Defer(transaction)));
    if (!Answered(transaction, error)) return Step::Deferred;
  } else if (functions->apply) {
    error = functions->apply(change);
  }
  return error == SetError::None ? Step::Done : Step::Refused;
}

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MAPROWS_H_
