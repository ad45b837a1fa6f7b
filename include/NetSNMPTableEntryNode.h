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
class RowIndex;
class RowSelection;
struct netsnmp_iterator_info_s;
struct variable_list;

// The rows of one iterator table, each filed under its row key.
//
// The key is the row-name prefix and then, for every integer index value in the
// order given, "." and the number: prefix "portEntry" with the indexes 3 and 7
// gives "portEntry.3.7". Rows are walked in the byte order of their keys, so
// "portEntry.10" comes before "portEntry.2"; a manager nevertheless sees them
// in the order of their indexes.
//
// A row is a vector of values, index values (isIndex_ set) and data values, in
// any order; NetSNMPTableRow says which column each one is.
//
// While a cell is served, a scalar node of the row key's name stands in the
// registry for a moment and displaces any node of that name: choose prefixes
// that give no key which is the name of a node.
//
// Ownership: rows and the index template are clones; the caller keeps what it
// passed in. A row handed out stays the store's and is valid until it is
// replaced or removed.
//
// Speed: a request costs about the same however many rows there are. Rows whose
// index values work on variables of the application, and rows handed out by
// GetRow(), GetFirstRow() or GetNextRow(), are looked at for every request: add
// a row anew to have it found by its index again. Rows with index values that
// are no integers make every request walk all rows.
//
// Threads: requests walk the rows on the subagent thread; an application that
// changes rows elsewhere holds a NetSNMPAgentGuard meanwhile. The store has one
// cursor, so one walk at a time.
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

  // The table registers, not its store: returns whether the node is the
  // registry's entry for its name.
  bool RegisterNode() override;

  // Writes the row key of `values` into `rowName`; returns the number of
  // integer index values in it.
  int GetRowName(const std::vector<NetSNMPNodeData*>& values,
                 std::string& rowName) const;

  // Files clones of `values` under their row key, replacing a row already
  // there. Returns false, with the store unchanged, when the number of integer
  // index values is not that of the index template; nothing else is checked.
  bool AddRow(const std::vector<NetSNMPNodeData*>& values);

  // Deletes the row of that key; returns false if there is none. The cursor, if
  // it stood there, is past the last row then.
  bool RemoveRow(const std::string& rowName);

  // The row of that key, or null.
  std::vector<NetSNMPNodeData*>* GetRow(const std::string& rowName);

  // Moves the cursor to the first row; returns it, or null if there are none.
  std::vector<NetSNMPNodeData*>* GetFirstRow();

  // Moves the cursor on; returns the row there, or null past the last one, also
  // when called again there.
  std::vector<NetSNMPNodeData*>* GetNextRow();

  std::string rowNamePrefix_;
  unsigned int columnCount_;
  // Owned. To be changed by AddRow() and RemoveRow() alone; other changes are
  // noticed when the number of rows or a row that was chosen has changed.
  std::map<std::string, std::vector<NetSNMPNodeData*>*> rows_;
  std::map<std::string, std::vector<NetSNMPNodeData*>*>::iterator rowCursor_;
  NetSNMPTableNode* tableNode_;                  // borrowed; may be null
  std::vector<NetSNMPNodeData*> indexTemplate_;  // owned

 private:
  friend class NetSNMPTableNode;
  friend class RowSelection;
  friend variable_list* table_get_first_data_point(void**, void**,
                                                   variable_list*,
                                                   netsnmp_iterator_info_s*);
  friend variable_list* table_get_next_data_point(void**, void**,
                                                  variable_list*,
                                                  netsnmp_iterator_info_s*);
  friend class ServedRow;

  // Constructed under one guard, so that no other thread meets a half-built
  // node in the registry, and from copies, since the originals may belong to
  // the older node that this one destroys.
  NetSNMPTableEntryNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                        unsigned int oidLen, const std::string& name,
                        const std::string& rowNamePrefix,
                        const std::vector<NetSNMPNodeData*>& indexTemplate,
                        unsigned int columnCount, NetSNMPTableNode* tableNode);

  // The walk of the iterator's hooks: over the rows selected for the requests
  // at hand, or over all.
  std::vector<NetSNMPNodeData*>* FirstCandidate();
  std::vector<NetSNMPNodeData*>* NextCandidate();

  std::vector<NetSNMPNodeData*>* MoveCursor(
      std::map<std::string, std::vector<NetSNMPNodeData*>*>::iterator place);
  std::vector<NetSNMPNodeData*>* HandOut(
      std::map<std::string, std::vector<NetSNMPNodeData*>*>::iterator place);

  // The tables that serve these rows; each leaves when it is destroyed.
  std::vector<NetSNMPTableNode*> servedBy_;
  std::unique_ptr<RowIndex> index_;
  RowSelection* selection_;  // the one at work, or null
};

#endif  // SNMPSUBAGENT_NETSNMPTABLEENTRYNODE_H_
