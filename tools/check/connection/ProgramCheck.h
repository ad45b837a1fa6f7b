// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROGRAMCHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROGRAMCHECK_H_

#include <optional>
#include <string>

#include "check/connection/CheckConnection.h"

namespace snmpsubagent::check {

// Whether the dynamic linker can load a program with all its libraries: what
// keeps it from that. The program is not run, unless it is linked statically or
// brings a linker of its own: it is to be one that one would run.
std::optional<Diagnosis> CheckProgram(const std::string& program);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROGRAMCHECK_H_
