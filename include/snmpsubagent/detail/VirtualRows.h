// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

#include "snmpsubagent/IndexOrder.h"
#include "snmpsubagent/detail/RowStore.h"

namespace snmpsubagent::detail {

// Rows that nobody holds: functions of the application's tell them one by one.
// Keeps the row that was found last.
template <typename Key, typename Row>
class VirtualRows {
 public:
  using RowOf = std::function<std::optional<Row>(const Key&)>;
  using KeyAfter = std::function<std::optional<Key>(const Key*)>;

  VirtualRows(RowOf rowOf, KeyAfter keyAfter)
      : rowOf_(std::move(rowOf)), keyAfter_(std::move(keyAfter)) {}

  std::optional<Row> RowUnder(const Key& key) const { return rowOf_(key); }

  bool Find(OidView index, RowView& found) {
    const std::optional<Key> key = ReadKey<Key>(index);
    return key && Show(*key, found);
  }

  bool FindNext(OidView index, bool include, RowView& found,
                IndexWriter& foundIndex) {
    if (include && Find(index, found)) {
      WriteIndex(foundIndex);
      return true;
    }
    std::optional<Key> key = FloorKey<Key>(index);
    do {
      key = keyAfter_(key ? &*key : nullptr);
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
  bool Show(const Key& key, RowView& found) {
    row_ = rowOf_(key);
    if (!row_) return false;
    key_ = key;
    found.key = &*key_;
    found.row = &*row_;
    return true;
  }
  void WriteIndex(IndexWriter& index) const { WriteIndex(*key_, index); }
  static void WriteIndex(const Key& key, IndexWriter& index) {
    index.Clear();
    IndexSyntax<Key>::Write(index, key);
  }

  RowOf rowOf_;
  KeyAfter keyAfter_;
  std::optional<Key> key_;
  std::optional<Row> row_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_VIRTUALROWS_H_
