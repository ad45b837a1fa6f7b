// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_
#define SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_

#include <poll.h>
#include <snmpsubagent/detail/Clock.h>
#include <sys/timerfd.h>

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <optional>

// The time of all agents, which stands still except in Pass(): the timers that
// are due go off then, and each agent does what it is time for before it does
// anything else, or when it is dispatched. One at a time; built before the
// agents and destroyed after them.
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
    void Schedule(int timer, std::optional<Time> time) override {
      const std::lock_guard lock(mutex_);
      timers_.erase(timer);
      if (time) timers_[timer] = *time;
      if (time && *time <= Now()) GoOff(timer);
    }
    void Pass(Time::duration time) {
      const std::lock_guard lock(mutex_);
      now_ += time.count();
      for (const auto& [timer, due] : timers_) {
        if (due <= Now()) GoOff(timer);
      }
    }

   private:
    // The kernel takes a moment; the agent's thread may be as fast.
    static void GoOff(int timer) {
      itimerspec atOnce{};
      atOnce.it_value.tv_nsec = 1;
      timerfd_settime(timer, 0, &atOnce, nullptr);
      pollfd waiting{timer, POLLIN, 0};
      poll(&waiting, 1, 10);
    }

    std::atomic<Time::rep> now_{Time::duration(std::chrono::hours(24)).count()};
    std::mutex mutex_;
    std::map<int, Time> timers_;
  };

  static Clock& TheClock() {
    static auto* const clock = new Clock;  // a thread may outlive all else
    return *clock;
  }
};

#endif  // SNMPSUBAGENT_TESTS_SUPPORT_STANDINGTIME_H_
