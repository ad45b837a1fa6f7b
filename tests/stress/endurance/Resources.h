// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_

#include <cstddef>
#include <string>

// What this process has of the system now.
struct Resources {
  static Resources Now();

  std::string Text() const;

  // Throws std::runtime_error if it has more descriptors or threads after some
  // time, or `leeway` more bytes allocated.
  void RequireNoGrowth(const Resources& after, std::size_t leeway) const;

  std::size_t heap;      // bytes allocated
  std::size_t resident;  // bytes
  std::size_t descriptors;
  std::size_t threads;
};

// Has memory counted exactly, in a program that is started anew for it: in one
// arena, and without what a thread keeps of memory that was released.
void CountMemoryExactly(char** argv);

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_RESOURCES_H_
