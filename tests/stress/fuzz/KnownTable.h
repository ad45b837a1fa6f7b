// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_KNOWNTABLE_H_
#define SNMPSUBAGENT_TESTS_FUZZ_KNOWNTABLE_H_

#include <map>
#include <string>
#include <vector>

#include "Input.h"
#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"
#include "support/Oid.h"

// A registered table with indexes of any kind and one column behind them, and
// beside it what is known of its rows.
class KnownTable {
 public:
  // The index values of a row, with the type of each.
  struct Index {
    eNodeDataType type;
    std::uint32_t number;
  };
  using Indexes = std::vector<Index>;

  // Requires: a registry, and a connected subagent.
  explicit KnownTable(Input& input);

  NetSNMPTableEntryNode& Store() { return *store_; }
  netsnmp_handler_registration* Registration() const { return registration_; }
  std::size_t IndexCount() const { return types_.size(); }

  // Index values for a row: mostly as many as there are to be.
  Indexes SomeIndexes(Input& input) const;

  // The name of a cell: of a row that is there, or of anything.
  Oid SomeName(Input& input) const;

  void AddRow(const Indexes& indexes);
  void RemoveRow(const std::string& key);
  // The key of a row that is there; of none, if there are no rows.
  std::string SomeKey(Input& input) const;

  // From now on rows are changed in ways that are not followed.
  void LoseTrack() { known_ = false; }

  // Walks the table as managers do, and requires each row once and in order.
  void RequireWalk() const;

 private:
  struct Row {
    Oid name;
    long number;
  };

  std::string KeyOf(const Indexes& indexes) const;
  Oid NameOf(const Indexes& indexes) const;

  std::vector<eNodeDataType> types_;
  NetSNMPTableEntryNode* store_;  // the registry's
  netsnmp_handler_registration* registration_;
  std::map<std::string, Row> rows_;  // by their keys
  long lastNumber_ = 0;
  bool known_ = true;
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_KNOWNTABLE_H_
