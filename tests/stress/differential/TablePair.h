// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_TABLEPAIR_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_TABLEPAIR_H_

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "NetSNMPNodeData.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "PlainTable.h"
#include "support/Random.h"
#include "testkit/agentx/Pdu.h"

// The two ways of serving a table: the sub-identifier after the root.
enum class Way : std::uint32_t { kFast = 1, kPlain = 2 };

// What a table is like.
struct Shape {
  std::vector<eNodeDataType> indexes;
  unsigned int columns;  // the last one's number, indexes counted
  int rows;              // to begin with
  // Whether rows are also changed in ways that applications seldom use.
  bool odd;
  // Whether values lose their storage.
  bool storageless;
};

// Variables of an application that values are bound to.
struct Variables {
  int number = 0;
  unsigned int count = 0;
  std::string text;
  char label[64] = {};
  bool enabled = false;
  unsigned char address[6] = {};
};

bool operator==(const Variables& a, const Variables& b);

// The rows of a table as one way knows them.
struct Rows {
  Shape shape;
  NetSNMPTableEntryNode* store;  // the registry's
  std::deque<Variables> variables;
};

// A table that exists twice, with the same rows: as a NetSNMPTableNode and as a
// PlainTable.
class TablePair {
 public:
  // Builds the table with that number, which is its last sub-identifier.
  TablePair(std::uint32_t number, const Shape& shape, Random& random);

  // Registers the plain one; the other is the registry's.
  void RegisterPlain() { plain_.Register(); }

  // Changes the rows of both in the same random way.
  void Change(Random& random);

  std::uint32_t Number() const { return number_; }
  const Shape& TheShape() const { return fastRows_.shape; }

  // The index of a row, as sub-identifiers; empty if there are no rows.
  testkit::agentx::Oid SomeIndex(Random& random) const;

  // The side effects of one way: the position of the cursor, and the
  // application's variables.
  std::string CursorText(Way way) const;
  const std::deque<Variables>& VariablesOf(Way way) const {
    return RowsOf(way).variables;
  }

  const NetSNMPTableNode& FastTable() const { return *fast_; }

 private:
  const Rows& RowsOf(Way way) const {
    return way == Way::kFast ? fastRows_ : plainRows_;
  }

  std::uint32_t number_;
  NetSNMPTableNode* fast_;  // the registry's
  Rows fastRows_;
  Rows plainRows_;
  PlainTable plain_;
};

// The OID of a table.
std::vector<unsigned long> TableOid(Way way, std::uint32_t number);

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_TABLEPAIR_H_
