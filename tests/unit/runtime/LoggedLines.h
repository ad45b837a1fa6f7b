// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LOGGEDLINES_H_
#define SNMPSUBAGENT_TESTS_LOGGEDLINES_H_

#include <string>
#include <utility>
#include <vector>

// A level and a text.
using LoggedLine = std::pair<unsigned int, std::string>;

// All that went to LogXMessage(), which this program defines itself and so
// takes the place of the platform library's.
std::vector<LoggedLine> LoggedLines();

#endif  // SNMPSUBAGENT_TESTS_LOGGEDLINES_H_
