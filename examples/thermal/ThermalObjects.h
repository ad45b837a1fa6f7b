// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef THERMALOBJECTS_H_
#define THERMALOBJECTS_H_

class ThermalController;

// Builds the nodes of THERMAL-EXAMPLE-MIB, bound to the members of
// `controller`, which must outlive them. The registry owns them.
void BuildThermalObjects(ThermalController& controller);

// The interval between two measurements that a manager has set, in seconds.
// Requires: a NetSNMPAgentGuard while the subagent runs.
unsigned int SampleInterval();

#endif  // THERMALOBJECTS_H_
