// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTABLEROW_H_
#define SNMPSUBAGENT_NETSNMPTABLEROW_H_

#include <cstddef>
#include <vector>

#include "NetSNMPNodeData.h"
#include "SnmpSubAgentExport.h"

// One row of an iterator table, split into index values (isIndex_ set) and data
// values, and again as the full row, whose columns count from 1, index values
// first.
//
// Ownership: the row owns clones; the caller keeps what it passed in.
//
// Threads: one row, one thread.
class SNMPSUBAGENT_EXPORT NetSNMPTableRow {
 public:
  // A row of clones of `values`; a null element has no column.
  explicit NetSNMPTableRow(const std::vector<NetSNMPNodeData*>& values);
  virtual ~NetSNMPTableRow();

  NetSNMPTableRow(const NetSNMPTableRow&) = delete;
  NetSNMPTableRow& operator=(const NetSNMPTableRow&) = delete;

  // Adds a clone of `value` behind the index values. The full row is stale
  // until RebuildTableRow(), which `rebuild` calls at once.
  void AddIndex(const NetSNMPNodeData& value, bool rebuild);

  // Adds a clone of `value` behind the data values; `rebuild` as above.
  void AppendData(const NetSNMPNodeData& value, bool rebuild);

  // Rebuilds the full row and numbers the columns.
  void RebuildTableRow();

  // Deletes all values.
  void EmptyRow();

  // Moves the index cursor to the first index value; returns it, or null if
  // there are none.
  NetSNMPNodeData* GetFirstIndex();

  // Advances the index cursor; returns the value there, or null past the last
  // one.
  NetSNMPNodeData* GetNextIndex();

  int IndexCount() const;

  std::vector<NetSNMPNodeData*> indexValues_;  // owned
  std::size_t indexCursor_;                    // position in indexValues_
  std::vector<NetSNMPNodeData*> dataValues_;   // owned
  std::vector<NetSNMPNodeData*> fullRow_;      // owned; [k] is column k + 1
};

#endif  // SNMPSUBAGENT_NETSNMPTABLEROW_H_
