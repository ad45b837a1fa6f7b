// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DATANODETEST_H_
#define SNMPSUBAGENT_TESTS_DATANODETEST_H_

#include <gmock/gmock.h>

#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "support/FakeSubAgent.h"
#include "support/LocalAgent.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"

// Scalars before a registry, the agent library and a connected subagent.
class DataNodeTest : public testing::Test {
 protected:
  // The registry owns it.
  static NetSNMPDataNode* Build(Oid oid, const std::string& name,
                                const NetSNMPNodeData& value,
                                void (*callback)(NetSNMPDataNode*) = nullptr,
                                const std::string& trapName = "") {
    return new NetSNMPDataNode(oid.data(), Length(oid), name, value, callback,
                               trapName);
  }

  // The writable integer scalar of most tests.
  NetSNMPDataNode* BuildFanSpeed(void (*callback)(NetSNMPDataNode*) = nullptr) {
    return Build(kFanSpeedOid, "fanSpeed",
                 NetSNMPIntNodeData(&speed_, eNodeAccessReadWrite), callback);
  }

  static std::string FanSpeedLine(const std::string& message) {
    return "SNMP: Node = fanSpeed; " + message;
  }

  const Oid kFanSpeedOid = TestOid({1, 1, 0});
  const Oid kOtherOid = TestOid({1, 2, 0});
  int speed_ = 7;
  const LocalAgent agent_;
  FakeSubAgent subAgent_{true};
  NodeLog log_;
  const ScopedRegistry registry_;
};

#endif  // SNMPSUBAGENT_TESTS_DATANODETEST_H_
