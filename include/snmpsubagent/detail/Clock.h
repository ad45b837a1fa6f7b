// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_CLOCK_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_CLOCK_H_

#include <chrono>
#include <optional>

#include "snmpsubagent/Export.h"

// The time that the library goes by; not for the application's own use.
namespace snmpsubagent::detail {

using Time = std::chrono::steady_clock::time_point;

// std::chrono::steady_clock, or what stands in for it in a test.
SNMPSUBAGENT_OBJECTS_EXPORT Time Now() noexcept;

// What stands in for it, see <snmpsubagent/testing/Clock.h>.
//
// Threads: any.
class SNMPSUBAGENT_OBJECTS_EXPORT TestClock {
 public:
  virtual Time Now() const noexcept = 0;
  // The timer, a descriptor of timerfd_create(2), is to become readable when it
  // is `time`; not at all without one. In place of what was said of it before.
  virtual void Schedule(int timer, std::optional<Time> time) = 0;

 protected:
  virtual ~TestClock();
};

// For the whole process; null for the steady clock. It lives until the process
// ends, since another thread may be using it.
SNMPSUBAGENT_OBJECTS_EXPORT void SetTestClock(TestClock* clock) noexcept;

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_CLOCK_H_
