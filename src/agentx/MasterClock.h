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

  void Set(std::uint32_t ticks, Clock::time_point now) {
    ticks_ = ticks;
    setAt_ = now;
    known_ = true;
  }

  // In hundredths of a second, from 4294967295 on to 0; 0 before Set().
  std::uint32_t At(Clock::time_point now) const {
    using Ticks = std::chrono::duration<std::int64_t, std::centi>;
    if (!known_) return 0;
    const auto since = std::chrono::duration_cast<Ticks>(now - setAt_);
    return ticks_ + static_cast<std::uint32_t>(since.count());
  }

 private:
  std::uint32_t ticks_ = 0;
  Clock::time_point setAt_;
  bool known_ = false;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_MASTERCLOCK_H_
