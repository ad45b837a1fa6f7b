// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_READCHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_READCHECK_H_

#include "check/Manager.h"
#include "check/Served.h"

namespace snmpsubagent::check {

// Whether GET finds every instance that the walk has shown, of the same type.
void CheckGets(Manager& manager, Served& served, Report& report);

// Whether GETNEXT from the begin of each object, and from its last instance,
// goes where the walk went. What has come meanwhile is no fault.
void CheckEnds(Manager& manager, Served& served, Report& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_READCHECK_H_
