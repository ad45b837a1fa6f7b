// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_CLOCK_H_
#define SNMPSUBAGENT_OBJECTS_CLOCK_H_

#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent::detail {

// Leaves the timer to the clock of a test; false if there is none.
bool ScheduledByTest(int timer, std::optional<Time> time);

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_CLOCK_H_
