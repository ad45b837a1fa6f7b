// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_COMMAND_H_
#define SNMPSUBAGENT_TOOLS_CHECK_COMMAND_H_

#include <chrono>
#include <exception>
#include <string>
#include <vector>

namespace snmpsubagent::check {

enum ExitStatus { kConformant = 0, kFindings = 1, kCouldNotCheck = 2 };

// The words of the command line are none that the program has.
struct Usage : std::exception {};

// The two commands, each with its own words behind its name. Each writes its
// report to standard output, and throws Usage and CannotCheck.
int MibCommand(int argc, char** argv);
int ConnectionCommand(int argc, char** argv);

// "a:b" as two words.
std::vector<std::string> SplitAtColons(const std::string& words);
// "0.5". Throws Usage.
std::chrono::milliseconds ParsedSeconds(const char* text);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_COMMAND_H_
