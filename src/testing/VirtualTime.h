// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_VIRTUALTIME_H_
#define SNMPSUBAGENT_TESTING_VIRTUALTIME_H_

#include <atomic>
#include <chrono>
#include <map>
#include <optional>
#include <vector>

#include "snmpsubagent/detail/Clock.h"
#include "testing/MasterState.h"
#include "testing/Monitor.h"

namespace snmpsubagent::testing::internal {

using snmpsubagent::detail::Time;

// The virtual time of the process, the timers that wait for it, and the master
// agents that it waits for. Lives until the process ends.
//
// Threads: any.
class VirtualTime final : public snmpsubagent::detail::TestClock {
 public:
  static VirtualTime& Instance();

  // Throws std::logic_error if it stands still already.
  void Stop();
  void GoOn();
  void Advance(Time::duration time);

  Time Now() const noexcept override { return Time(Time::duration(now_)); }
  void Schedule(int timer, std::optional<Time> time) override;

  void Add(MasterState& master);
  void Remove(MasterState& master);

 private:
  // Returns when nothing is left to be done at this time.
  void Settle();
  void AwaitAgents();
  std::vector<MasterState*> Masters();
  // When the next timer is due.
  std::optional<Time> Next();
  // With the lock.
  std::optional<Time> Earliest() const;
  bool IsSomethingDue() const;
  void SetTo(Time time);
  static void Fire(int timer);

  Monitor monitor_;
  std::atomic<Time::rep> now_{0};
  bool isStopped_ = false;
  std::map<int, Time> timers_;
  std::vector<MasterState*> masters_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_VIRTUALTIME_H_
