// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWINDEX_H_
#define SNMPSUBAGENT_TABLES_ROWINDEX_H_

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

class NetSNMPNodeData;

// The rows of a store in the order of their index OIDs, in which managers see
// them; the store itself keeps the text order of their keys.
//
// A row is ordered while its place is certain: all its index values are
// integers in local data, and nobody outside was given the row to change. One
// whose indexes may change at any time is floating: it may be the answer to any
// request. A row with other index values, or with the OID of another row, is
// irregular: what a manager sees of it depends on a walk over all rows.
//
// Rows may be changed behind the store's back, so the index keeps numbers and
// addresses and never follows an address.
class RowIndex {
 public:
  using Row = std::vector<NetSNMPNodeData*>;
  using Rows = std::map<std::string, Row*>;
  // Mostly of one index or two, which then stand in the entry itself: a look-up
  // follows no address more than it must.
  using Oid = boost::container::small_vector<unsigned long, 2>;

  // Sub-identifiers that belong to somebody else.
  struct OidView {
    const unsigned long* first;
    const unsigned long* last;
  };

  // The lexicographic order of OIDs, in which a view need not be copied.
  struct OidOrder {
    using is_transparent = void;
    bool operator()(const Oid& a, const Oid& b) const { return a < b; }
    bool operator()(const OidView& a, const Oid& b) const {
      return std::lexicographical_compare(a.first, a.last, b.begin(), b.end());
    }
    bool operator()(const Oid& a, const OidView& b) const {
      return std::lexicographical_compare(a.begin(), a.end(), b.first, b.last);
    }
  };

  // An ordered row: its OID; its address and, of each index, whether it is
  // signed, which with the OID tells the row's key.
  struct Place {
    const Row* row;
    std::uint64_t signedIndexes;
  };
  using Ordered = std::map<Oid, Place, OidOrder>;

  explicit RowIndex(const Row& indexTemplate);

  // A row was filed under `key`.
  void Filed(const std::string& key, const Row& row);

  // The row of `key` is about to go.
  void Leaving(const std::string& key, const Row& row);

  // The row of `key` is about to be given to somebody who may change it.
  void HandedOut(const std::string& key, const Row& row);

  // Whether every one of `rows` is ordered or floating here.
  bool Covers(const Rows& rows) const;

  const Ordered& OrderedRows() const { return ordered_; }
  const std::set<std::string>& FloatingRows() const { return floating_; }

 private:
  // Fills in OID and place of an ordered row; false if `row` is not one.
  // `floating` tells the other two kinds apart.
  bool Order(const Row& row, Oid& oid, Place& place, bool& floating) const;
  void EraseOrdered(const Row& row);

  const Row& indexTemplate_;  // the store's
  Ordered ordered_;
  std::set<std::string> floating_;
  std::set<std::string> irregular_;
};

#endif  // SNMPSUBAGENT_TABLES_ROWINDEX_H_
