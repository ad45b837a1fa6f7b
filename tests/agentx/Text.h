// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_AGENTX_TEXT_H_
#define SNMPSUBAGENT_TESTS_AGENTX_TEXT_H_

#include <string>

#include "agentx/Pdu.h"

// Messages as a person reads them, on one line.
namespace agentx {

// As "1.3.6.1".
std::string Text(const Oid& oid);

// As "INTEGER 5", or "noSuchInstance".
std::string Text(const Value& value);

// What it asks for or answers. Of the messages that are neither, the name.
std::string Text(const Body& body);

}  // namespace agentx

#endif  // SNMPSUBAGENT_TESTS_AGENTX_TEXT_H_
