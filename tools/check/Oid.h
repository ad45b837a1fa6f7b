// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_OID_H_
#define SNMPSUBAGENT_TOOLS_CHECK_OID_H_

#include <net-snmp/library/oid.h>
#include <net-snmp/net-snmp-config.h>

#include <string>
#include <vector>

namespace snmpsubagent::check {

// Compared as RFC 3416 orders names.
using Oid = std::vector<oid>;

// "1.3.6.1.2.1.1"; of nothing, "".
std::string ToText(const Oid& name);

// Whether `name` is `root` or below it.
bool IsAtOrBelow(const Oid& name, const Oid& root);

// Behind all that is at or below `name`. Requires that `name` is not empty.
Oid BehindSubtree(Oid name);

Oid operator+(Oid name, const Oid& more);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_OID_H_
