// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef FANTABLE_H_
#define FANTABLE_H_

#include <string>
#include <vector>

#include "ThermalController.h"

// thermalFanTable: a row for each fan.
class FanTable {
 public:
  // Builds the table's nodes, which the registry owns, bound to `fans`, which
  // must outlive them and must not move.
  explicit FanTable(ThermalController::Fans& fans);

  // Logs which fans a manager has given another label since the last call.
  // Requires: a NetSNMPAgentGuard while the subagent runs.
  void TellNewLabels();

 private:
  const ThermalController::Fans& fans_;
  std::vector<std::string> labels_;  // as they were at the last call
};

#endif  // FANTABLE_H_
