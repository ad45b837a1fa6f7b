// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTABLEENTRYNODE_H_
#define SNMPSUBAGENT_NETSNMPTABLEENTRYNODE_H_

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "NetSNMPNode.h"
#include "NetSNMPNodeData.h"
#include "SnmpSubAgentExport.h"

class NetSNMPAgentGuard;
class NetSNMPTableNode;
struct RowLookup;

// The rows of one iterator table, each stored under its row key.
//
// The key is the row-name prefix and then, for every integer index value in the
// order given, "." and the number: prefix "portEntry" with the indexes 3 and 7
// gives "portEntry.3.7". GetFirstRow() and GetNextRow() walk in the byte order
// of the keys, so "portEntry.10" comes before "portEntry.2"; a manager sees the
// rows in the order of their indexes.
//
// A row is a vector of values, index values (isIndex_ set) and data values, in
// any order; NetSNMPTableRow says which column each one is. While a cell is
// served, a scalar named like the row key may be in the registry, where it
// destroys any other node of that name: choose another prefix.
//
// Ownership: rows and the index template are clones; the caller keeps what it
// passed in. A row that the store returns stays the store's and is valid until
// it is replaced or removed.
//
// Speed: a request costs about the same however many rows there are. Rows whose
// index values are bound to variables, and rows returned by GetRow(),
// GetFirstRow() or GetNextRow(), may change, so every request compares them;
// add a row again to have it found by its index. Index values that are no
// integers make every request walk all rows.
//
// Threads: requests walk the rows on the subagent thread; an application that
// changes rows elsewhere holds a NetSNMPAgentGuard. The store has one cursor,
// so one walk at a time.
class SNMPSUBAGENT_EXPORT NetSNMPTableEntryNode : public NetSNMPNode {
 public:
  // `oid` is that of the table's entry object, `oidLen` its length in
  // sub-identifiers. `indexTemplate` has one value for each index column, in
  // index order; `columnCount` is the number of the last column. The store
  // attaches itself to `tableNode`, which may be null.
  NetSNMPTableEntryNode(unsigned long* oid, unsigned int oidLen,
                        const std::string& name,
                        const std::string& rowNamePrefix,
                        const std::vector<NetSNMPNodeData*>& indexTemplate,
                        unsigned int columnCount, NetSNMPTableNode* tableNode);

  // Deletes all rows and detaches itself from its table.
  ~NetSNMPTableEntryNode() override;

  // The table registers, not its store. Returns whether the node is the
  // registry's entry for its name.
  bool RegisterNode() override;

  // Writes the row key of `values` into `rowName`; returns the number of
  // integer index values in it.
  int GetRowName(const std::vector<NetSNMPNodeData*>& values,
                 std::string& rowName) const;

  // Stores clones of `values` under their row key, replacing a row already
  // there. Returns false, with the store unchanged, if the number of integer
  // index values is not that of the index template; nothing else is checked. A
  // null element has no column: those behind it move up by one.
  bool AddRow(const std::vector<NetSNMPNodeData*>& values);

  // Deletes the row of that key; returns false if there is none. A cursor on
  // that row moves past the last one.
  bool RemoveRow(const std::string& rowName);

  // The row of that key, or null.
  std::vector<NetSNMPNodeData*>* GetRow(const std::string& rowName);

  // Moves the cursor to the first row; returns it, or null if there are none.
  std::vector<NetSNMPNodeData*>* GetFirstRow();

  // Advances the cursor; returns the row there, or null past the last one.
  std::vector<NetSNMPNodeData*>* GetNextRow();

  std::string rowNamePrefix_;
  unsigned int columnCount_;
  // Owned. Change it with AddRow() and RemoveRow() only; other changes are
  // noticed if they change the number of rows or the row that a request finds.
  std::map<std::string, std::vector<NetSNMPNodeData*>*> rows_;
  std::map<std::string, std::vector<NetSNMPNodeData*>*>::iterator rowCursor_;
  NetSNMPTableNode* tableNode_;                  // borrowed; may be null
  std::vector<NetSNMPNodeData*> indexTemplate_;  // owned

 private:
  friend struct RowLookup;

  // Built under one guard; see NetSNMPNode.
  NetSNMPTableEntryNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                        unsigned int oidLen, const std::string& name,
                        const std::string& rowNamePrefix,
                        const std::vector<NetSNMPNodeData*>& indexTemplate,
                        unsigned int columnCount, NetSNMPTableNode* tableNode);

  std::unique_ptr<RowLookup> lookup_;
  // For fields to come: a class keeps its size.
  [[gnu::unused]] void* reserved_[4];
};

#endif  // SNMPSUBAGENT_NETSNMPTABLEENTRYNODE_H_
