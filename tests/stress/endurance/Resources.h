// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_

#include <cstddef>
#include <string>

// What this process has of the system now.
struct Resources {
  static Resources Now();

  std::string Text() const;

  std::size_t heap;      // bytes allocated
  std::size_t resident;  // bytes
  std::size_t descriptors;
  std::size_t threads;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_
