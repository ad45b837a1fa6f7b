// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Alarms.h"

#include <array>
#include <string>

#include "EventLog.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTrapNode.h"
#include "ThermalController.h"

namespace {

// Builds a notification of THERMAL-EXAMPLE-MIB.
NetSNMPTrapNode* BuildTrap(unsigned long number, const std::string& name) {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 1, 0, number};
  return new NetSNMPTrapNode(oid.data(), oid.size(), name);
}

NetSNMPDataNode* Scalar(const std::string& name) {
  return dynamic_cast<NetSNMPDataNode*>(NetSNMPNode::nodeMap_->at(name));
}

}  // namespace

Alarms::Alarms(const ThermalController& controller, EventLog& eventLog)
    : controller_(controller),
      eventLog_(eventLog),
      overheatAlarm_(BuildTrap(1, "thermalOverheatAlarm")) {
  BuildTrap(2, kFansSwitched);
}

void Alarms::Check() {
  if (controller_.overheated != overheated_) {
    overheated_ = controller_.overheated;
    eventLog_.Add(overheated_ ? "overheated" : "no longer overheated");
    sent_ = false;
  }
  // Retried while the subagent is not connected.
  if (overheated_ && !sent_) sent_ = Send();
}

bool Alarms::Send() {
  overheatAlarm_->AddDataObject(Scalar("thermalTemperature"));
  overheatAlarm_->AddDataObject(Scalar("thermalLocation"));
  return overheatAlarm_->TriggerV2Trap();
}
