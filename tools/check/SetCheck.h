// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_SETCHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_SETCHECK_H_

#include "check/Manager.h"
#include "check/Served.h"

namespace snmpsubagent::check {

// Tries SETs on one instance of each object: those that have to be refused, and
// those that have to succeed, after which the object gets the value that it
// had. Makes rows in tables whose RowStatus lets managers do so, and destroys
// them. Throws CannotCheck if the community may not write at all.
void CheckSets(Manager& manager, const Served& served, Report& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_SETCHECK_H_
