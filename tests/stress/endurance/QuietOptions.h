// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_QUIETOPTIONS_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_QUIETOPTIONS_H_

#include <snmpsubagent.h>

#include <string>

// Of an agent whose log nobody reads; its master agent is at this port.
inline snmpsubagent::AgentOptions QuietOptions(int masterPort) {
  snmpsubagent::AgentOptions options;
  options.master = "tcp:127.0.0.1:" + std::to_string(masterPort);
  options.log = [](snmpsubagent::LogLevel, const std::string&) {};
  return options;
}

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_QUIETOPTIONS_H_
