// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_LOG_H_
#define SNMPSUBAGENT_RUNTIME_LOG_H_

#include <string>

#include "LogXMessage.h"

// Logs a line of the subagent's own, which belongs to no node.
inline void LogLine(const std::string& text) {
  constexpr unsigned int kLevel = 3;
  LogXMessage(kLevel, text);
}

#endif  // SNMPSUBAGENT_RUNTIME_LOG_H_
