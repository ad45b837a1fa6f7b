// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWSELECTION_H_
#define SNMPSUBAGENT_TABLES_ROWSELECTION_H_

#include <boost/container/small_vector.hpp>
#include <cstddef>

#include "tables/RowIndex.h"

class NetSNMPTableEntryNode;
struct netsnmp_request_info_s;

// How the row that matches a request is found.
enum class Lookup {
  kWalkAll,     // by the iterator, among all rows of the store
  kCandidates,  // by the iterator, among the selected rows
  kExact,       // it is known
};

// The few rows of a store that can match the requests of a PDU. While it is
// active, the iterator's hooks hand out these rows instead of all rows. A row
// too many never changes a response.
//
// Requires: the lock of NetSNMPAgentGuard.
class RowSelection {
 public:
  using Rows = RowIndex::Rows;
  using Row = RowIndex::Row;

  // The row that matches a request.
  struct Match {
    netsnmp_request_info_s* request;
    const RowIndex::Oid* index;
    Rows::iterator place;  // in the store
  };
  using Matches = boost::container::small_vector<Match, 4>;

  explicit RowSelection(NetSNMPTableEntryNode& store);
  ~RowSelection();
  RowSelection(const RowSelection&) = delete;
  RowSelection& operator=(const RowSelection&) = delete;

  // Selects the volatile rows, which may match any request.
  Lookup AddVolatile();

  // Selects the row with the index `oid`, for a GET or SET.
  Lookup AddExact(netsnmp_request_info_s* request, RowIndex::OidView oid);

  // Selects the first row behind the index `oid`, for a GETNEXT. Behind the
  // last row it selects the first one, which is next in the following column.
  Lookup AddNext(netsnmp_request_info_s* request, RowIndex::OidView oid);

  // Selects the first row of all, for a GETNEXT from before the rows.
  Lookup AddFirst();

  // Of each request for which kExact was returned, in that order.
  const Matches& AllMatches() const { return matches_; }

  // Makes the hooks hand out the selected rows until it is destroyed; all rows
  // if a walk over them is needed.
  void Activate(Lookup lookup);

  // Whether the hooks hand out all rows.
  bool WalksAll() const { return walksAll_; }

  // The selected rows in the order of their keys; null at the end. They move
  // the store's cursor as a walk over all rows does.
  Row* First();
  Row* Next();

  // Leaves the store's cursor where a walk over all rows would have left it:
  // one for a GET ends at the last row that it looks for.
  void EndWalk(bool isGet);

  // The store's entry, key and row, of `row`, which was chosen for `request`.
  // Null if the row is not a selected one or has been replaced or removed.
  const Rows::value_type* EntryOf(const netsnmp_request_info_s* request,
                                  const Row* row) const;

  // Forgets a row that is about to be removed.
  void Forget(Rows::iterator place);

  // Forgets all, because the store is about to be destroyed.
  void ForgetStore();

 private:
  Lookup AddMatch(netsnmp_request_info_s* request,
                  const RowIndex::IndexedRows::value_type& indexed);
  Rows::iterator Add(const RowIndex::IndexedRows::value_type& indexed);
  Row* Current();

  NetSNMPTableEntryNode* store_;
  RowSelection* outer_ = nullptr;
  bool active_ = false;
  bool walksAll_ = false;
  boost::container::small_vector<Rows::iterator, 4> selected_;
  Matches matches_;
  std::size_t position_ = 0;
};

#endif  // SNMPSUBAGENT_TABLES_ROWSELECTION_H_
