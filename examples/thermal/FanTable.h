// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef FANTABLE_H_
#define FANTABLE_H_

#include <string>
#include <vector>

#include "ThermalController.h"

// thermalFanTable: a row for each fan.
class FanTable {
 public:
  // Builds the table's nodes, which the registry owns, over `fans`, which must
  // outlive them and stay where they are.
  explicit FanTable(ThermalController::Fans& fans);

  // Says which fans a manager has given another label since the last call.
  // Requires: a NetSNMPAgentGuard while the subagent runs.
  void TellNewLabels();

 private:
  const ThermalController::Fans& fans_;
  std::vector<std::string> labels_;  // as they were at the last call
};

#endif  // FANTABLE_H_
