// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MAPROWS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_MAPROWS_H_

#include <algorithm>
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

#include "snmpsubagent/IndexOrder.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/RowChange.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/RowStore.h"
#include "snmpsubagent/detail/TableState.h"
#include "snmpsubagent/detail/VirtualRows.h"

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
  static constexpr bool kIsByNumber =
      IsNumberIndex<Key> &&
      std::is_same_v<typename Map::key_compare, std::less<Key>>;
  static_assert(kIsByNumber,
                "the container has another order than the managers': give it "
                "snmpsubagent::IndexOrder<Key>");

  static auto From(Map& rows, OidView index, bool include) {
    if constexpr (kIsByNumber) {
      // Keys below 0 have no index.
      if (index.empty()) return rows.lower_bound(Key{});
      constexpr auto kHighest = std::numeric_limits<NumberOf<Key>>::max();
      if (index[0] > static_cast<SubIdentifier>(kHighest)) return rows.end();
      const Key key = static_cast<Key>(index[0]);
      return index.size() == 1 && include ? rows.lower_bound(key)
                                          : rows.upper_bound(key);
    } else {
      return rows.end();
    }
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

// Whether a key has an index at all: no number below 0 or of more than 32 bits,
// no text that is too long.
template <typename Key>
bool CanBeIndex(const Key& key) {
  if constexpr (IsNumberIndex<Key>) {
    return key >= Key{} &&
           static_cast<Key>(static_cast<SubIdentifier>(key)) == key;
  } else {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    return !index.IsTooLong() && ReadKey<Key>(index.View()).has_value();
  }
}

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
               std::optional<RowType> before)
      : StagedRow(std::move(table), rows, index, before ? &*before : nullptr),
        rows_(std::move(rows)),
        key_(std::move(key)),
        before_(std::move(before)),
        after_(before_ ? *before_ : RowType()) {}

  void* Row() override { return &after_; }
  // None if it is destroyed.
  std::optional<RowType> FinalRow() const {
    return After() == RowStatus::None ? std::nullopt
                                      : std::optional<RowType>(after_);
  }

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
  void Store() override { rows_->Make(key_, FinalRow()); }
  void Restore() override { rows_->Make(key_, before_); }
  bool IsUntouched(bool put) const override {
    return rows_->Holds(key_, put ? FinalRow() : before_);
  }
  // A row that the SET has made goes, and one that it has destroyed and that is
  // there again stays. Of others the cells go back that are as the SET has made
  // them.
  bool KeepChanges() override {
    std::optional<RowType> now = rows_->RowUnder(key_);
    if (!now || After() == RowStatus::None) return false;
    if (!before_) return true;
    bool takesBack = Before() != After();
    for (const auto& column : Written()) {
      takesBack |= column->TakeBack(&*now, &*before_, &after_);
    }
    before_ = std::move(now);
    return takesBack;
  }

 private:
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

  // A copy of the row that there is now.
  std::optional<Row> RowUnder(const Key& key) const {
    if (virtual_) return virtual_->RowUnder(key);
    const auto place = rows_.find(key);
    if (place == rows_.end()) return std::nullopt;
    return place->second;
  }
  bool Contains(const Key& key) const {
    return virtual_ ? virtual_->RowUnder(key).has_value()
                    : rows_.find(key) != rows_.end();
  }
  bool Put(const Key& key, Row row) {
    const bool isNew = rows_.insert_or_assign(key, std::move(row)).second;
    if (isNew) Forget();
    Note(key, [&](OidView index) { this->NotePut(index, isNew); });
    return isNew;
  }
  bool Erase(const Key& key) {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    if (rows_.erase(key) == 0) return false;  // with `key`, if it is the row's
    Forget();
    if (this->TakesNotes()) this->NoteErased(index.View());
    return true;
  }
  // The application has changed the row.
  void Changed(const Key& key) {
    Note(key, [&](OidView index) { this->NoteChange(index); });
  }
  RowStatus KeyStatus(const Key& key) const {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    return this->StatusOf(index.View());
  }

  bool SetKeyStatus(const Key& key, RowStatus status) {
    if (!Contains(key)) return false;
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    this->NoteStatus(index.View(), status);
    return true;
  }

  // Has the table hold this row under the key, or none; the rows of functions
  // are theirs to make.
  void Make(const Key& key, const std::optional<Row>& row) {
    if (virtual_) return;
    if (row) {
      Put(key, *row);
    } else {
      Erase(key);
    }
  }
  // Whether it does, as far as rows can be compared.
  bool Holds(const Key& key, const std::optional<Row>& row) const {
    if (owned_ || virtual_) return true;  // Changes have been noted.
    const auto place = rows_.find(key);
    if (place == rows_.end() || !row) return (place == rows_.end()) == !row;
    return AreEqual(place->second, *row, true);
  }

  // Makes them those of `rows`, and touches only what differs.
  void Replace(Map rows) {
    if (owned_ && !this->TakesNotes()) {
      rows_ = std::move(rows);
      Forget();
      return;
    }
    std::vector<Key> gone;
    for (const auto& [key, row] : rows_) {
      if (rows.find(key) == rows.end()) gone.push_back(key);
    }
    for (const Key& key : gone) Erase(key);
    for (auto& [key, row] : rows) {
      const auto place = rows_.find(key);
      if (place == rows_.end()) {
        Put(key, std::move(row));
      } else if (!AreEqual(place->second, row, false)) {
        place->second = std::move(row);
        Changed(key);
      }
    }
  }

  void SetLoader(Loader loader, std::chrono::steady_clock::duration time) {
    loader_ = loader ? std::make_shared<Loader>(std::move(loader)) : nullptr;
    timeToLive_ = time;
    loaded_.reset();
  }
  void SetVirtual(typename VirtualRows<Key, Row>::RowOf rowOf,
                  typename VirtualRows<Key, Row>::KeyAfter keyAfter) {
    if (!virtual_) virtual_.emplace(*this);
    virtual_->SetFunctions(std::move(rowOf), std::move(keyAfter));
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

  std::size_t Size() const { return rows_.size(); }
  std::size_t CountUpTo(std::size_t most) override {
    return virtual_ ? virtual_->CountUpTo(most) : rows_.size();
  }
  // Keys that a manager may make rows with are those that all rules allow.
  void RestrictKeys(std::function<bool(const Key&)> rule) {
    keyRules_.push_back(std::move(rule));
  }
  bool MayBeRow(OidView index) override {
    const auto key = ReadKey<Key>(index);
    if (!key) return false;
    RowView row;
    return std::all_of(keyRules_.begin(), keyRules_.end(),
                       [&](const auto& rule) { return rule(*key); }) ||
           Find(index, row);
  }
  bool Find(OidView index, RowView& found) override {
    if (virtual_) return virtual_->Find(index, found);
    Load();
    const auto place = IndexedBy<Map>::From(rows_, index, true);
    if (place == rows_.end() || !IsShown(place->first) ||
        !Is(place->first, index)) {
      return false;
    }
    Show(*place, found);
    return true;
  }
  bool FindNext(OidView index, bool include, RowView& found,
                IndexWriter& foundIndex) override {
    if (virtual_) return virtual_->FindNext(index, include, found, foundIndex);
    Load();
    auto place = PlaceBehind(index, include);
    while (place != rows_.end() && !IsShown(place->first)) ++place;
    if (place == rows_.end()) return false;
    foundIndex.Clear();
    IndexSyntax<Key>::Write(foundIndex, place->first);
    Remember(index, include, foundIndex.View(), place);
    Show(*place, found);
    return true;
  }
  std::unique_ptr<StagedRow> Stage(std::shared_ptr<TableState> table,
                                   OidView index, const void* row) override {
    Key key = *ReadKey<Key>(index);
    std::optional<Row> before;
    if (row) before = *static_cast<const Row*>(row);
    return std::make_unique<StagedMapRow<Map>>(
        std::move(table), this->shared_from_this(), index, std::move(key),
        std::move(before));
  }

 private:
  using Place = typename Map::iterator;

  // Not a number below 0, nor an enumeration's of more than 32 bits, which
  // would be taken for another one. In an IndexOrder they may be anywhere.
  static bool IsShown(const Key& key) {
    if constexpr (IsNumberIndex<Key>) {
      return CanBeIndex(key);
    } else {
      static_cast<void>(key);
      return true;
    }
  }
  static bool Is(const Key& key, OidView index) {
    IndexWriter written;
    IndexSyntax<Key>::Write(written, key);
    return written.View() == index;
  }
  void Show(const typename Map::value_type& row, RowView& found) const {
    found.key = &row.first;
    found.row = &row.second;
  }
  template <typename Tell>
  void Note(const Key& key, Tell tell) {
    if (!this->TakesNotes()) return;
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    tell(index.View());
  }

  // Not while a SET or a function of a cell is under way, whose rows would be
  // others all of a sudden.
  void Load() {
    if (!loader_ || loading_ || !Staged().empty() || Readings() != 0) return;
    const auto now = Now();
    if (loaded_ && now - *loaded_ < timeToLive_) return;
    loading_ = true;
    const auto loader = loader_;
    Map rows;
    try {
      (*loader)(rows);
    } catch (...) {
      loading_ = false;
      throw;
    }
    loading_ = false;
    loaded_ = Now();
    for (auto place = rows.begin(); place != rows.end();) {
      place = CanBeIndex(place->first) ? std::next(place) : rows.erase(place);
    }
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
  std::optional<VirtualRows<Key, Row>> virtual_;
  std::shared_ptr<const Functions_> functions_;
  std::vector<std::function<bool(const Key&)>> keyRules_;

  std::shared_ptr<Loader> loader_;  // kept while it runs
  std::chrono::steady_clock::duration timeToLive_{};
  std::optional<std::chrono::steady_clock::time_point> loaded_;
  bool loading_ = false;

  bool remembers_ = false;
  std::vector<SubIdentifier> lastAsked_;
  std::vector<SubIdentifier> lastFound_;
  Place place_{};
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
