// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWPIN_H_
#define SNMPSUBAGENT_TABLES_ROWPIN_H_

#include <vector>

class NetSNMPNodeData;

// Remembers the row that a SET works on from its first phase to its last. In
// between the application may replace or remove the row, and its address may be
// given to another one.
class RowPin {
 public:
  using Row = std::vector<NetSNMPNodeData*>;

  explicit RowPin(const Row* row);
  ~RowPin();
  RowPin(const RowPin&) = delete;
  RowPin& operator=(const RowPin&) = delete;

  // Whether `row` is the one pinned, and still there.
  bool Holds(const Row* row) const { return row_ == row; }

  // Called for every row that a store gives up.
  static void Discarded(const Row* row);

 private:
  const Row* row_;
};

#endif  // SNMPSUBAGENT_TABLES_ROWPIN_H_
