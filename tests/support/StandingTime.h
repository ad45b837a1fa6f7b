// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_
#define SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_

#include <snmpsubagent/detail/Clock.h>

#include <atomic>
#include <chrono>
#include <optional>

// The time of all agents, which stands still except in Pass(). No timer goes
// off: what is due is done when the agent has something else to do, or is
// dispatched. One at a time; built before the agents and destroyed after them.
//
// Threads: any.
class StandingTime {
 public:
  StandingTime() { snmpsubagent::detail::SetTestClock(&TheClock()); }
  ~StandingTime() { snmpsubagent::detail::SetTestClock(nullptr); }
  StandingTime(const StandingTime&) = delete;
  StandingTime& operator=(const StandingTime&) = delete;

  void Pass(std::chrono::milliseconds time) { TheClock().Pass(time); }

 private:
  using Time = snmpsubagent::detail::Time;

  class Clock final : public snmpsubagent::detail::TestClock {
   public:
    Time Now() const noexcept override { return Time(Time::duration(now_)); }
    void Schedule(int, std::optional<Time>) override {}
    void Pass(Time::duration time) { now_ += time.count(); }

   private:
    std::atomic<Time::rep> now_{Time::duration(std::chrono::hours(24)).count()};
  };

  static Clock& TheClock() {
    static auto* const clock = new Clock;  // a thread may outlive all else
    return *clock;
  }
};

#endif  // SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_
