// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_MASTERCLOCK_H_
#define SNMPSUBAGENT_AGENTX_MASTERCLOCK_H_

#include <chrono>
#include <cstdint>

namespace snmpsubagent::agentx {

// The master agent's sysUpTime, between the responses that tell it.
class MasterClock {
 public:
  using Clock = std::chrono::steady_clock;

  // What a response tells goes on from what was expected, also beyond
  // 4294967295; else the master agent has started anew.
  void Set(std::uint32_t ticks, Clock::time_point now) {
    const std::int64_t expected = Since(now);
    const auto off =
        static_cast<std::int32_t>(ticks - static_cast<std::uint32_t>(expected));
    const bool goesOn = known_ && off > -kMinute && off < kMinute;
    ticks_ = goesOn ? expected + off : ticks;
    setAt_ = now;
    known_ = true;
  }

  // In hundredths of a second, from 4294967295 on to 0; 0 for a time before the
  // master agent has started, and before Set().
  std::uint32_t At(Clock::time_point time) const {
    const std::int64_t ticks = Since(time);
    return !known_ || ticks < 0 ? 0 : static_cast<std::uint32_t>(ticks);
  }

 private:
  static constexpr std::int32_t kMinute = 6000;

  std::int64_t Since(Clock::time_point time) const {
    using Ticks = std::chrono::duration<std::int64_t, std::centi>;
    return ticks_ + std::chrono::duration_cast<Ticks>(time - setAt_).count();
  }

  std::int64_t ticks_ = 0;  // goes on where sysUpTime begins again at 0
  Clock::time_point setAt_;
  bool known_ = false;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_MASTERCLOCK_H_
