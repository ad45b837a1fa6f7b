// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent in the event loop of systemd's library, sd-event(3), beside a timer.
//
//   objects_sd_event [host port]      where the master agent takes AgentX
//                                     sessions
#include <snmpsubagent.h>
#include <systemd/sd-event.h>

#include <cstdint>
#include <string>

namespace snmp = snmpsubagent;

constexpr std::uint64_t kSecond = 1000000;  // microseconds

int OnRequests(sd_event_source*, int, std::uint32_t, void* agent) {
  static_cast<snmp::Agent*>(agent)->Dispatch();
  return 0;
}

int OnSecond(sd_event_source* timer, std::uint64_t, void* seconds) {
  ++*static_cast<int*>(seconds);
  sd_event_source_set_time_relative(timer, kSecond);
  return sd_event_source_set_enabled(timer, SD_EVENT_ONESHOT);
}

int main(int argc, char* argv[]) {
  sd_event* loop = nullptr;
  if (sd_event_default(&loop) < 0) return 1;
  sd_event_set_signal_exit(loop, true);  // ends on SIGINT and SIGTERM

  int seconds = 0;
  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_sd_event", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.22");
  snmp::Scalar loopSeconds(module, "1", seconds);
  snmp::Scalar loopGoal(module, "2", 0, snmp::ReadWrite().Range(0, 100));

  sd_event_add_io(loop, nullptr, agent.Poll(), EPOLLIN, OnRequests, &agent);
  sd_event_add_time_relative(loop, nullptr, CLOCK_MONOTONIC, kSecond, 0,
                             OnSecond, &seconds);
  const int code = sd_event_loop(loop);
  sd_event_unref(loop);
  return code;
}
