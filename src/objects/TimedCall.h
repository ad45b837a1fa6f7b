// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_TIMEDCALL_H_
#define SNMPSUBAGENT_OBJECTS_TIMEDCALL_H_

#include "objects/AgentState.h"
#include "objects/Stopwatch.h"

namespace snmpsubagent::detail {

// Logs that the application's functions of an object took too long while this
// lived.
class TimedCall {
 public:
  TimedCall(AgentState& agent, OidView object)
      : agent_(agent), object_(object) {}
  ~TimedCall() {
    if (watch_.HasLongPassed()) agent_.ReportSlowFunction(object_);
  }
  TimedCall(const TimedCall&) = delete;
  TimedCall& operator=(const TimedCall&) = delete;

 private:
  AgentState& agent_;
  const OidView object_;
  const Stopwatch watch_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_TIMEDCALL_H_
