// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_TEXT_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_TEXT_H_

#include <string>

#include "testkit/agentx/Pdu.h"

// Messages as a person reads them, on one line.
namespace testkit::agentx {

// As "1.3.6.1".
std::string Text(const Oid& oid);

// As "INTEGER 5", or "noSuchInstance".
std::string Text(const Value& value);

// The type of the message, as "Register".
const char* NameOf(const Body& body);

// What it asks for or answers. Of the messages that are neither, the name.
std::string Text(const Body& body);

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_TEXT_H_
