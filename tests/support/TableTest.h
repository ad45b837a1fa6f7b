// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_TABLETEST_H_
#define SNMPSUBAGENT_TESTS_TABLETEST_H_

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "support/FakeSubAgent.h"
#include "support/LocalAgent.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"
#include "support/Values.h"

// Iterator tables before a registry, the agent library and a connected
// subagent. The registry owns tables and stores.
class TableTest : public testing::Test {
 protected:
  using StoredRow = std::vector<NetSNMPNodeData*>;

  static NetSNMPTableNode* BuildTable(
      Oid oid, const std::string& name,
      eNodeAccessMode access = eNodeAccessReadWrite,
      void (*callback)(NetSNMPDataNode*) = nullptr,
      const std::string& trapName = "") {
    return new NetSNMPTableNode(
        oid.data(), Length(oid), name,
        NetSNMPNodeData(eNodeDataVoid, access, nullptr, nullptr), callback,
        trapName);
  }

  // The store of `table`, which may be null; its row keys begin with the name
  // "port".
  static NetSNMPTableEntryNode* BuildStore(const std::string& name,
                                           const StoredRow& indexTemplate,
                                           unsigned int columnCount,
                                           NetSNMPTableNode* table) {
    Oid oid = TestOid({2, 1});
    return new NetSNMPTableEntryNode(oid.data(), Length(oid), name, "port",
                                     indexTemplate, columnCount, table);
  }

  // The table of most tests, still without rows.
  NetSNMPTableNode* BuildPortTable() {
    return BuildTable(kPortTableOid, "portTable");
  }

  // Its store: a port has two indexes, unit and slot, and the columns speed
  // (3, writable), label (4) and up (5).
  static NetSNMPTableEntryNode* BuildPortStore(NetSNMPTableNode* table) {
    return BuildStore("portStore", Values(Int(0), Unsigned(0)), 5, table);
  }

  static Values Port(int unit, unsigned int slot, int speed) {
    return Values(Index(Int(unit)), Index(Unsigned(slot)),
                  Int(speed, eNodeAccessReadWrite), Text("uplink"), Bool(true));
  }

  // The OID of a cell of the table.
  static Oid CellOid(unsigned long column, unsigned long unit,
                     unsigned long slot) {
    return TestOid({2, 1, column, unit, slot});
  }

  static std::string PortTableLine(const std::string& message) {
    return "SNMP: Node = portTable; " + message;
  }

  const Oid kPortTableOid = TestOid({2});
  const LocalAgent agent_;
  FakeSubAgent subAgent_{true};
  NodeLog log_;
  const ScopedRegistry registry_;
};

#endif  // SNMPSUBAGENT_TESTS_TABLETEST_H_
