// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef ALARMS_H_
#define ALARMS_H_

class EventLog;
class NetSNMPTrapNode;
class ThermalController;

// The name of the notification thermalFansSwitched, for the scalar that fires
// it.
constexpr char kFansSwitched[] = "thermalFansSwitched";

// The notifications of THERMAL-EXAMPLE-MIB. The service itself sends one of
// them, thermalOverheatAlarm.
class Alarms {
 public:
  // Builds the notifications' nodes, which the registry owns.
  Alarms(const ThermalController& controller, EventLog& eventLog);

  // Logs whether the controller has overheated or recovered since the last
  // call, and sends the alarm. Requires: a NetSNMPAgentGuard while the subagent
  // runs.
  void Check();

 private:
  bool Send();

  const ThermalController& controller_;
  EventLog& eventLog_;
  NetSNMPTrapNode* overheatAlarm_;  // the registry's
  bool overheated_ = false;         // as logged last
  bool sent_ = false;               // of the alarm that is on
};

#endif  // ALARMS_H_
