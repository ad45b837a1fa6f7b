// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTABLEROW_H_
#define SNMPSUBAGENT_NETSNMPTABLEROW_H_

#include <cstddef>
#include <vector>

#include "NetSNMPNodeData.h"
#include "SnmpSubAgentExport.h"

// The working form of one row of an iterator table: its values split into index
// values and data values, and all of them again as the full row in column
// order.
//
// Whether a value is an index is its isIndex_ flag. Columns are counted from 1
// along the full row, index values first.
//
// Ownership: the row holds clones and deletes them; the caller keeps what it
// passed in, unchanged.
//
// Threads: one row, one thread.
class SNMPSUBAGENT_EXPORT NetSNMPTableRow {
 public:
  // A row of clones of `values`, which must not be null.
  explicit NetSNMPTableRow(const std::vector<NetSNMPNodeData*>& values);
  virtual ~NetSNMPTableRow();

  NetSNMPTableRow(const NetSNMPTableRow&) = delete;
  NetSNMPTableRow& operator=(const NetSNMPTableRow&) = delete;

  // Adds a clone of `value` behind the index values. The full row is stale
  // until the next RebuildTableRow(), which `rebuild` makes at once.
  void AddIndex(const NetSNMPNodeData& value, bool rebuild);

  // Adds a clone of `value` behind the data values; `rebuild` as above.
  void AppendData(const NetSNMPNodeData& value, bool rebuild);

  // Makes the full row anew and numbers the columns.
  void RebuildTableRow();

  // Deletes all values.
  void EmptyRow();

  // Moves the index cursor to the first index value; returns it, or null if
  // there are none.
  NetSNMPNodeData* GetFirstIndex();

  // Moves the index cursor on; returns the value there, or null past the last
  // one, also when called again there.
  NetSNMPNodeData* GetNextIndex();

  int IndexCount() const;

  std::vector<NetSNMPNodeData*> indexValues_;  // owned
  std::size_t indexCursor_;                    // position in indexValues_
  std::vector<NetSNMPNodeData*> dataValues_;   // owned
  std::vector<NetSNMPNodeData*> fullRow_;      // owned; [k] is column k + 1
};

#endif  // SNMPSUBAGENT_NETSNMPTABLEROW_H_
