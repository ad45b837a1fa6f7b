// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DATASETTEST_H_
#define SNMPSUBAGENT_TESTS_DATASETTEST_H_

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPDataSetTableNode.h"
#include "support/FakeSubAgent.h"
#include "support/KeptDataSets.h"
#include "support/LocalAgent.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"
#include "support/Values.h"

// Dataset tables before a registry, the agent library and a connected subagent.
// The registry owns the tables.
class DataSetTest : public testing::Test {
 protected:
  NetSNMPDataSetTableNode* BuildTable(
      const std::vector<NetSNMPNodeData*>& columns) const {
    return BuildTable(columns, kEventTableOid);
  }

  static NetSNMPDataSetTableNode* BuildTable(
      const std::vector<NetSNMPNodeData*>& columns, Oid oid,
      eNodeAccessMode access = eNodeAccessReadWrite) {
    return new NetSNMPDataSetTableNode(
        oid.data(), Length(oid), "eventTable",
        NetSNMPNodeData(eNodeDataVoid, access, nullptr, nullptr), columns);
  }

  // The table of most tests: an event has a number, its index, a text and a
  // severity.
  NetSNMPDataSetTableNode* BuildEventTable() const {
    return BuildTable(Values(Unsigned(0), Text("", eNodeAccessReadWrite),
                             Int(0, eNodeAccessReadWrite)));
  }

  static Values Event(unsigned int number, const std::string& text,
                      int severity) {
    return Values(Unsigned(number), Text(text, eNodeAccessReadWrite),
                  Int(severity, eNodeAccessReadWrite));
  }

  const Oid kEventTableOid = TestOid({3});
  const LocalAgent agent_;
  const KeptDataSets kept_{};
  FakeSubAgent subAgent_{true};
  NodeLog log_;
  const ScopedRegistry registry_;
};

#endif  // SNMPSUBAGENT_TESTS_DATASETTEST_H_
