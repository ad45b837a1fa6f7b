// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ThermalObjects.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <string>

#include "Alarms.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "ThermalController.h"

namespace {

constexpr char kSampleInterval[] = "thermalSampleInterval";

// Builds the instance of an object of thermalController. A node copies its OID,
// its name and its value.
void BuildScalar(unsigned long object, const std::string& name,
                 const NetSNMPNodeData& value,
                 void (*callback)(NetSNMPDataNode*) = nullptr,
                 const std::string& trapName = "") {
  std::array<unsigned long, 12> oid{1,     3, 6, 1, 4,      1,
                                    32473, 1, 1, 1, object, 0};
  new NetSNMPDataNode(oid.data(), oid.size(), name, value, callback, trapName);
}

// Called on the subagent thread when a manager has written a new target. The
// value is bound to the controller's variable, which is brought back into range
// here.
void OnTargetWritten(NetSNMPDataNode* node) {
  int& target = *static_cast<int*>(node->nodeData_->NodeDataValue());
  target = std::clamp(target, ThermalController::kLowest,
                      ThermalController::kHighest);
  std::cout << node->NodeName() << " was set to " << target << std::endl;
}

// Values bound to the controller's variables: a manager reads what the service
// measures, and the service uses what a manager writes.
void BuildObjectsOverVariables(ThermalController& controller) {
  BuildScalar(2, "thermalFirmware",
              NetSNMPCharNodeData(controller.firmware, eNodeAccessReadOnly));
  BuildScalar(4, "thermalTemperature",
              NetSNMPIntNodeData(&controller.temperature, eNodeAccessReadOnly));
  BuildScalar(
      5, "thermalTargetTemperature",
      NetSNMPIntNodeData(&controller.targetTemperature, eNodeAccessReadWrite),
      OnTargetWritten);
  BuildScalar(
      6, "thermalRunTime",
      NetSNMPUnsignedIntNodeData(&controller.runTime, eNodeAccessReadOnly));
  BuildScalar(
      8, "thermalLocation",
      NetSNMPStringNodeData(&controller.location, eNodeAccessReadWrite));
  BuildScalar(10, "thermalOverheated",
              NetSNMPBoolNodeData(&controller.overheated, eNodeAccessReadOnly));
  BuildScalar(
      11, "thermalFansEnabled",
      NetSNMPBoolNodeData(&controller.fansEnabled, eNodeAccessReadWrite),
      nullptr, kFansSwitched);
  BuildScalar(12, "thermalCalibration",
              NetSNMPByteNodeData(controller.calibration,
                                  sizeof(controller.calibration),
                                  eNodeAccessReadWrite));
}

// Values with copies: constants, and settings that the service reads from the
// value.
void BuildObjectsThatHoldTheirValue() {
  std::string model = "TC-300";
  BuildScalar(1, "thermalModel",
              NetSNMPStringNodeData(&model, eNodeAccessReadOnly, true));

  unsigned char boardId[] = {0x00, 0x1b, 0x44, 0x11, 0x3a, 0xb7};
  BuildScalar(
      3, "thermalBoardId",
      NetSNMPByteNodeData(boardId, sizeof(boardId), eNodeAccessReadOnly, true));

  unsigned int sampleInterval = 1;
  BuildScalar(
      7, kSampleInterval,
      NetSNMPUnsignedIntNodeData(&sampleInterval, eNodeAccessReadWrite, true));

  // Copied text has no array that a manager could overrun.
  char contact[] = "facility desk";
  BuildScalar(9, "thermalContact",
              NetSNMPCharNodeData(contact, eNodeAccessReadWrite, true));
}

}  // namespace

void BuildThermalObjects(ThermalController& controller) {
  BuildObjectsOverVariables(controller);
  BuildObjectsThatHoldTheirValue();
}

unsigned int SampleInterval() {
  const NetSNMPNodeData* value = NetSNMPDataNode::GetNodeData(kSampleInterval);
  const auto seconds = *static_cast<unsigned int*>(value->NodeDataValue());
  return std::clamp(seconds, 1U, 60U);
}
