// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEXORDER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEXORDER_H_

#include <optional>
#include <vector>

#include "snmpsubagent/Index.h"
#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

namespace detail {

// The key that is exactly these sub-identifiers. No key has none.
template <typename Key>
std::optional<Key> ReadKey(OidView index) {
  IndexReader reader(index);
  Key key{};
  if (index.empty() || !IndexSyntax<Key>::Read(reader, key) ||
      !reader.Rest().empty()) {
    return std::nullopt;
  }
  return key;
}

// The greatest key that is not behind these sub-identifiers, in the order of
// the OIDs; it may be longer than an OID can be.
template <typename Key>
std::optional<Key> FloorKey(OidView index) {
  std::vector<SubIdentifier> ids(index.begin(), index.end());
  auto mode = IndexReader::Mode::RoundDown;
  while (!ids.empty()) {
    IndexReader reader(OidView(ids.data(), ids.size()), mode);
    Key key{};
    if (IndexSyntax<Key>::Read(reader, key)) return key;
    // There is none with what has been read in front: then the greatest one
    // with less in front.
    ids.resize(ids.size() - reader.Rest().size());
    while (!ids.empty() && ids.back() == 0) ids.pop_back();
    if (!ids.empty()) --ids.back();
    mode = IndexReader::Mode::Below;
  }
  return std::nullopt;
}

}  // namespace detail

// The order in which managers see keys: that of the OIDs that they make.
// Compares with sub-identifiers as well, which may be those of no key. For a
// container of the application's own:
//
//   std::map<std::string, User, snmp::IndexOrder<std::string>> users;
template <typename Key>
struct IndexOrder {
  using is_transparent = void;

  bool operator()(const Key& a, const Key& b) const {
    if constexpr (detail::IsNumberIndex<Key>) {
      return static_cast<SubIdentifier>(a) < static_cast<SubIdentifier>(b);
    } else {
      IndexWriter written;
      IndexSyntax<Key>::Write(written, a);
      return (*this)(written.View(), b);
    }
  }
  bool operator()(const Key& a, OidView b) const { return Compared(a, b) < 0; }
  bool operator()(OidView a, const Key& b) const { return Compared(b, a) > 0; }

 private:
  static int Compared(const Key& key, OidView index) {
    if constexpr (detail::IsNumberIndex<Key>) {
      const SubIdentifier id = static_cast<SubIdentifier>(key);
      return Compare(OidView(&id, 1), index);
    } else {
      IndexWriter written;
      IndexSyntax<Key>::Write(written, key);
      return Compare(written.View(), index);
    }
  }
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEXORDER_H_
