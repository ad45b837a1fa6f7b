// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_JSON_H_
#define SNMPSUBAGENT_TOOLS_CHECK_JSON_H_

#include <string>
#include <string_view>

namespace snmpsubagent::check {

// Text as a JSON string, in printable ASCII: other bytes count as characters of
// Latin-1 and are escaped.
std::string JsonQuoted(std::string_view text);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_JSON_H_
