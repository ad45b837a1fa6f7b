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
// them. The store itself has them in the byte order of their row keys.
//
// Rows may change without the store knowing, so the index has numbers and
// addresses and never follows an address.
class RowIndex {
 public:
  using Row = std::vector<NetSNMPNodeData*>;
  using Rows = std::map<std::string, Row*>;
  // Most tables have one index or two, which then need no memory of their own.
  using Oid = boost::container::small_vector<unsigned long, 2>;

  // Borrowed sub-identifiers.
  struct OidView {
    const unsigned long* first;
    const unsigned long* last;
  };

  // The lexicographic order of OIDs. A view is compared without a copy.
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

  // The address of an indexed row and, one bit for each index, whether it is
  // signed. With the OID, this is what the row key is made of.
  struct Place {
    const Row* row;
    std::uint64_t signedIndexes;
  };
  using IndexedRows = std::map<Oid, Place, OidOrder>;

  explicit RowIndex(const Row& indexTemplate);

  // Enters the row of that key.
  void Add(const std::string& key, const Row& row);

  // Removes the row of that key, before it is changed or deleted.
  void Remove(const std::string& key, const Row& row);

  // To be called when the application may change the row from now on.
  void MakeVolatile(const std::string& key, const Row& row);

  // Whether each of `rows` is indexed or volatile here.
  bool Covers(const Rows& rows) const;

  const IndexedRows& Indexed() const { return indexed_; }
  const std::set<std::string>& Volatile() const { return volatile_; }

 private:
  enum class Kind {
    // All index values are integers in local data.
    kIndexed,
    // Index values may change at any time, so the row may match any request.
    kVolatile,
    // The index values are not those of the table, or another row has the same
    // OID: only a walk over all rows shows what a manager sees of the row.
    kUnindexable,
  };

  // Fills in the OID and the place of an indexed row.
  Kind Classify(const Row& row, Oid& oid, Place& place) const;
  void RemoveIndexed(const Row& row);

  const Row& indexTemplate_;  // the store's
  IndexedRows indexed_;
  std::set<std::string> volatile_;
  std::set<std::string> unindexable_;
};

#endif  // SNMPSUBAGENT_TABLES_ROWINDEX_H_
