// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_TRAPTEST_H_
#define SNMPSUBAGENT_TESTS_TRAPTEST_H_

#include "NetSNMPTrapNode.h"
#include "support/DataNodeTest.h"
#include "support/SentTraps.h"

// Notifications before a connected subagent, without a master agent: whether
// they arrive is for the tests with a real one.
class TrapTest : public DataNodeTest {
 protected:
  // The registry owns it.
  static NetSNMPTrapNode* BuildTrap(Oid oid, const std::string& name) {
    return new NetSNMPTrapNode(oid.data(), Length(oid), name);
  }

  NetSNMPTrapNode* BuildFanAlarm() {
    return BuildTrap(kFanAlarmOid, "fanAlarm");
  }

  // The scalar that most traps carry.
  NetSNMPDataNode* BuildFanSpeedWithTrap(
      const std::string& trapName,
      void (*callback)(NetSNMPDataNode*) = nullptr) {
    return Build(kFanSpeedOid, "fanSpeed",
                 NetSNMPIntNodeData(&speed_, eNodeAccessReadWrite), callback,
                 trapName);
  }

  // What the notification carries when it is fired with fanSpeed alone.
  TrapVariables FanAlarmWith(long speed) const {
    return {TrapOidVariable(kFanAlarmOid),
            IntegerVariable(kFanSpeedOid, speed)};
  }

  const Oid kFanAlarmOid = TestOid({0, 1});
  SentTraps sent_;
};

#endif  // SNMPSUBAGENT_TESTS_TRAPTEST_H_
