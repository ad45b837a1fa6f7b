// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ALLOCATIONS_PATIENTOPTIONS_H_
#define SNMPSUBAGENT_TESTS_ALLOCATIONS_PATIENTOPTIONS_H_

#include <snmpsubagent.h>

#include <chrono>
#include <string>

// Those of an agent that connects again at once, and gives up nothing else:
// whatever happens is for a lack of memory. Its log needs memory, too.
inline snmpsubagent::AgentOptions PatientOptions(const std::string& master) {
  snmpsubagent::AgentOptions options;
  options.master = master;
  options.firstRetry = std::chrono::milliseconds(1);
  options.lastRetry = std::chrono::milliseconds(1);
  options.timeout = std::chrono::seconds(60);
  options.responseTimeout = std::chrono::seconds(60);
  options.pingInterval = std::chrono::milliseconds(0);
  options.log = [](snmpsubagent::LogLevel, const std::string& line) {
    const std::string copy = line;
  };
  return options;
}

#endif  // SNMPSUBAGENT_TESTS_ALLOCATIONS_PATIENTOPTIONS_H_
