// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_SECONDS_H_
#define SNMPSUBAGENT_EXAMPLES_SECONDS_H_

#include <snmpsubagent.h>
#include <systemd/sd-event.h>

#include <cstdint>

namespace snmp = snmpsubagent;

// A service in an event loop of sd-event(3), beside a timer.
class Seconds {
 public:
  // Both outlive it.
  Seconds(snmp::Agent& agent, sd_event* loop)
      : module_(agent, "1.3.6.1.4.1.32473.3.22") {
    sd_event_add_io(loop, nullptr, agent.Poll(), EPOLLIN, OnRequests, &agent);
    sd_event_add_time_relative(loop, nullptr, CLOCK_MONOTONIC, kSecond, 0,
                               OnSecond, &seconds_);
  }

 private:
  static constexpr std::uint64_t kSecond = 1000000;  // microseconds

  static int OnRequests(sd_event_source*, int, std::uint32_t, void* agent) {
    static_cast<snmp::Agent*>(agent)->Dispatch();
    return 0;
  }
  static int OnSecond(sd_event_source* timer, std::uint64_t, void* seconds) {
    ++*static_cast<int*>(seconds);
    sd_event_source_set_time_relative(timer, kSecond);
    return sd_event_source_set_enabled(timer, SD_EVENT_ONESHOT);
  }

  int seconds_ = 0;
  snmp::Module module_;
  snmp::Scalar<int> secondsObject_{module_, "1", seconds_};
  snmp::Scalar<int> goal_{module_, "2", 0, snmp::ReadWrite().Range(0, 100)};
};

#endif  // SNMPSUBAGENT_EXAMPLES_SECONDS_H_
