// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_OWNERTEST_H_
#define SNMPSUBAGENT_TESTS_OWNERTEST_H_

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMPDataNode.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"

// The scalar "fanSpeed" that values may belong to. Its log shows their
// notifications: its callback logs, and its trap, fired without a subagent,
// fails.
class OwnerTest : public testing::Test {
 protected:
  OwnerTest() {
    Oid oid = TestOid({2});
    new NetSNMPTrapNode(oid.data(), Length(oid), "fanAlarm");
  }

  // The registry owns it. It has a clone of `value`.
  static NetSNMPDataNode* BuildOwner(const NetSNMPNodeData& value,
                                     void (*callback)(NetSNMPDataNode*)) {
    Oid oid = TestOid({1, 0});
    return new NetSNMPDataNode(oid.data(), Length(oid), "fanSpeed", value,
                               callback, "fanAlarm");
  }

  static NetSNMPDataNode* BuildOwner(
      void (*callback)(NetSNMPDataNode*) = nullptr) {
    return BuildOwner(
        NetSNMPNodeData(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr),
        callback);
  }

  static void LogCall(NetSNMPDataNode* node) {
    node->NodeLogMessage("Callback runs.");
  }

  static std::string OwnerLine(const std::string& message) {
    return "SNMP: Node = fanSpeed; " + message;
  }

  const std::vector<std::string> kNothing;
  const std::vector<std::string> kCallback = {
      OwnerLine("Callback runs."), OwnerLine("Trigger callback called.")};
  const std::vector<std::string> kTrap = {
      OwnerLine("Trap = fanAlarm; firing of data node trap failed.")};

  const ScopedRegistry registry_;
  NodeLog log_;
};

#endif  // SNMPSUBAGENT_TESTS_OWNERTEST_H_
