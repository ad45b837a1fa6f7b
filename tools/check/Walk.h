// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_WALK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_WALK_H_

#include <vector>

#include "check/Manager.h"
#include "check/MibModule.h"

namespace snmpsubagent::check {

// All that the agent shows below the module's roots, upwards. Where it fails or
// does not go up, that is a finding, and the walk goes on with the next object.
// Throws CannotCheck if the agent stops answering.
std::vector<Varbind> Walk(Manager& manager, const MibModule& module,
                          Report& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_WALK_H_
