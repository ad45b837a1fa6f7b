// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CHECK_REPORTS_H_
#define SNMPSUBAGENT_TESTS_CHECK_REPORTS_H_

#include <string>
#include <vector>

#include "ScriptedAgent.h"

// Serves all of the MIB as it should be.
void ServeAll(ScriptedAgent::Objects& objects);

check::MibOptions CheckTestMib();

// What the check says of the agent.
check::Report ReportOf(const ScriptedAgent& agent,
                       const check::MibOptions& options = CheckTestMib());

// Each finding as "fault object OID", the OID behind the module's.
std::vector<std::string> Findings(const check::Report& report);

// The text of the finding about that object; "" if there is none.
std::string TextAbout(const check::Report& report, const std::string& object);

// "expected right wrong undecided"
std::string Numbers(const check::Total& total);

#endif  // SNMPSUBAGENT_TESTS_CHECK_REPORTS_H_
