// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CLOCK_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CLOCK_H_

#include <chrono>

namespace snmpsubagent::testing {

// Virtual time for all agents of the process: it stands still, except in
// Advance(). Attempts to connect, pings, timeouts of requests and of Later,
// times to live of values and rows, TimeStamps and the sysUpTime of a Master
// all go by it.
//
//   snmp::testing::Clock clock;
//   snmp::testing::Master master;
//   ...
//   clock.Advance(std::chrono::minutes(10));
//
// Build it before the agents: what is timed by then still happens by the steady
// clock. Timers and threads of the service itself are not touched. One at a
// time.
//
// Threads: that which has built it.
class Clock {
 public:
  // Stops the time. Throws std::logic_error if another one has.
  Clock();
  // The steady clock goes on.
  ~Clock();
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;

  std::chrono::steady_clock::time_point Now() const;

  // Lets that time pass: what an agent does within it is done at its moment and
  // in its order, with each answer of a Master, before the time goes on. When
  // it returns, all of it is done. Throws TimedOut if an agent does not do it,
  // which may be one with Poll() that no Loop serves.
  void Advance(std::chrono::steady_clock::duration time);
};

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CLOCK_H_
