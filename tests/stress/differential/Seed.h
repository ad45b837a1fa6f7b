// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_SEED_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_SEED_H_

#include <cstdint>
#include <cstdlib>

// The number in an environment variable.
inline std::uint32_t Setting(const char* variable, std::uint32_t otherwise) {
  const char* const text = std::getenv(variable);
  return text == nullptr
             ? otherwise
             : static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

// Where the random decisions of a run begin.
inline std::uint32_t Seed() {
  return Setting("SNMPSUBAGENT_DIFFERENTIAL_SEED", 20240101);
}

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_SEED_H_
