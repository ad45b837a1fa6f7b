// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_STOPWATCH_H_
#define SNMPSUBAGENT_OBJECTS_STOPWATCH_H_

#include <time.h>

#include <chrono>

namespace snmpsubagent::detail {

// Whether the application has kept managers waiting. Reads a clock that costs
// next to nothing, and is some milliseconds late.
class Stopwatch {
 public:
  // As long as a manager's tools wait for a response.
  static constexpr std::chrono::seconds kLong{1};

  bool HasLongPassed() const { return Now() - begin_ >= kLong; }

 private:
  static std::chrono::nanoseconds Now() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::chrono::seconds(now.tv_sec) +
           std::chrono::nanoseconds(now.tv_nsec);
  }

  std::chrono::nanoseconds begin_ = Now();
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_STOPWATCH_H_
