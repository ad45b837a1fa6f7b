// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWSELECTION_H_
#define SNMPSUBAGENT_TABLES_ROWSELECTION_H_

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "tables/RowIndex.h"

class NetSNMPTableEntryNode;

// The few rows of a store that can be the answer to the requests at hand. While
// it is active, the iterator's hooks hand out these instead of all rows. One
// too many never changes an answer.
class RowSelection {
 public:
  using Rows = RowIndex::Rows;
  using Row = RowIndex::Row;

  // The row that answers a request; null if only the iterator can tell.
  using Choice = const RowIndex::Ordered::value_type*;

  explicit RowSelection(NetSNMPTableEntryNode& entry);
  ~RowSelection();
  RowSelection(const RowSelection&) = delete;
  RowSelection& operator=(const RowSelection&) = delete;

  // Select the rows that may be wanted whatever the request; the row of `oid`;
  // the first row after it or, without one, the first of all, since a walk goes
  // on with that one in the next column; the first of all. They return false if
  // the rows cannot be told apart without walking all of them. `choice` is the
  // row itself if it is certain to be the one wanted.
  bool AddFloating();
  bool AddExact(const RowIndex::OidView& oid, Choice& choice);
  bool AddAfter(const RowIndex::OidView& oid, Choice& choice);
  bool AddFirst();

  // Hands the selection to the store's hooks until it is destroyed.
  void Activate();

  // The selected rows in the order of their keys, null at the end. They move
  // the store's cursor as a walk over all rows would.
  Row* First();
  Row* Next();

  bool Holds(const Row* row) const;

  // The key of a selected row while it certainly is the one made of the row's
  // index values, else null. It stays until the row is removed.
  const std::string* KeyOf(const Row* row) const;

  // Moves the store's cursor to where the walk that looks for the selected rows
  // ends: to the last of them when it has found as many as it looks for, past
  // the last row of all when it has to look further.
  void EndWalk(bool foundAll);

  // Called when the row of `place` is removed, and when the store is destroyed.
  void Forget(Rows::iterator place);
  void ForgetStore();

 private:
  bool Add(RowIndex::Ordered::const_iterator ordered);
  Choice Certain(RowIndex::Ordered::const_iterator ordered) const;
  Row* Current();

  NetSNMPTableEntryNode* entry_;
  RowSelection* outer_ = nullptr;
  bool active_ = false;
  std::vector<Rows::iterator> selected_;
  std::size_t position_ = 0;
};

#endif  // SNMPSUBAGENT_TABLES_ROWSELECTION_H_
