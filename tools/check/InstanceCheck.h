// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_INSTANCECHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_INSTANCECHECK_H_

#include "check/Served.h"

namespace snmpsubagent::check {

// Compares each instance with its object: access, type, length, range,
// enumeration, and what its identifier says by the INDEX. Those of no object
// are foreign, unless they belong to another module.
void CheckInstances(Served& served, Report& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_INSTANCECHECK_H_
