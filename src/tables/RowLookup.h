// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWLOOKUP_H_
#define SNMPSUBAGENT_TABLES_ROWLOOKUP_H_

#include <vector>

#include "NetSNMPTableEntryNode.h"
#include "tables/RowIndex.h"

class RowSelection;

// What a store keeps for the requests that it serves.
struct RowLookup {
  static RowLookup& Of(const NetSNMPTableEntryNode& store) {
    return *store.lookup_;
  }

  explicit RowLookup(const NetSNMPTableEntryNode& store)
      : index(store.indexTemplate_) {}

  RowIndex index;
  // That of the requests being served, or null. Innermost: a callback may have
  // other requests served.
  RowSelection* selection = nullptr;
  // The tables that show the rows; each leaves when it is destroyed.
  std::vector<NetSNMPTableNode*> tables;
};

#endif  // SNMPSUBAGENT_TABLES_ROWLOOKUP_H_
