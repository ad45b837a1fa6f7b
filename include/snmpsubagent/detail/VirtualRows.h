// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "snmpsubagent/IndexOrder.h"
#include "snmpsubagent/detail/RowStore.h"

namespace snmpsubagent::detail {

// Rows that nobody holds: functions of the application's tell them one by one.
// Keeps the row that was found last, and one for each Reading.
template <typename Key, typename Row>
class VirtualRows {
 public:
  using RowOf = std::function<std::optional<Row>(const Key&)>;
  using KeyAfter = std::function<std::optional<Key>(const Key*)>;

  explicit VirtualRows(const RowStore& store) : store_(store) {}

  void SetFunctions(RowOf rowOf, KeyAfter keyAfter) {
    functions_ = std::make_shared<const Functions>(
        Functions{std::move(rowOf), std::move(keyAfter)});
  }

  std::optional<Row> RowUnder(const Key& key) const {
    const auto functions = functions_;
    return functions->rowOf(key);
  }

  bool Find(OidView index, RowView& found) {
    const std::optional<Key> key = ReadKey<Key>(index);
    return key && Show(*key, found);
  }

  bool FindNext(OidView index, bool include, RowView& found,
                IndexWriter& foundIndex) {
    if (include && Find(index, found)) {
      WriteIndex(*static_cast<const Key*>(found.key), foundIndex);
      return true;
    }
    std::optional<Key> key = FloorKey<Key>(index);
    do {
      const auto functions = functions_;
      key = functions->keyAfter(key ? &*key : nullptr);
      if (!key) return false;
      WriteIndex(*key, foundIndex);
      if (foundIndex.View() <= index) {
        throw std::logic_error("the key after another one is not behind it");
      }
    } while (!Show(*key, found));  // Rows may go at any time.
    return true;
  }

  std::size_t CountUpTo(std::size_t most) {
    RowView row;
    IndexWriter next;
    Oid last;
    std::size_t count = 0;
    while (count < most && FindNext(last, false, row, next)) {
      last = Oid(next.View());
      ++count;
    }
    return count;
  }

 private:
  // Replaced as a whole, since one of them may be running.
  struct Functions {
    RowOf rowOf;
    KeyAfter keyAfter;
  };
  struct Kept {
    Key key;
    Row row;
  };

  bool Show(const Key& key, RowView& found) {
    std::optional<Row> row = RowUnder(key);
    if (!row) return false;
    if (kept_.size() <= store_.Readings()) kept_.resize(store_.Readings() + 1);
    std::optional<Kept>& kept = kept_[store_.Readings()];
    kept.emplace(Kept{key, std::move(*row)});
    found.key = &kept->key;
    found.row = &kept->row;
    return true;
  }
  static void WriteIndex(const Key& key, IndexWriter& index) {
    index.Clear();
    IndexSyntax<Key>::Write(index, key);
  }

  const RowStore& store_;
  std::shared_ptr<const Functions> functions_;
  std::deque<std::optional<Kept>> kept_;  // these stay where they are
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_
