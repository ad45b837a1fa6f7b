// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_AGENTLIBRARYCHECK_H_
#define SNMPSUBAGENT_ADAPTER_AGENTLIBRARYCHECK_H_

#include <string>

// What makes the Net-SNMP in this process unusable, as text for a log line;
// empty if nothing does. Unusable is one of another minor version than that
// whose headers this library was compiled with, and any if there are two of
// them: the calls of one end in the other then.
std::string WhatMakesNetSnmpUnusable();

#endif  // SNMPSUBAGENT_ADAPTER_AGENTLIBRARYCHECK_H_
