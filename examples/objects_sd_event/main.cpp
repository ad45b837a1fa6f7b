// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent in the event loop of systemd's library, sd-event(3), beside a timer.
//
//   objects_sd_event [host port]      where the master agent takes AgentX
//                                     sessions
#include <string>

#include "Seconds.h"

int main(int argc, char* argv[]) {
  sd_event* loop = nullptr;
  if (sd_event_default(&loop) < 0) return 1;
  sd_event_set_signal_exit(loop, true);  // ends on SIGINT and SIGTERM

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  int code = 0;
  {
    snmp::Agent agent("objects_sd_event", options);
    const Seconds seconds(agent, loop);
    code = sd_event_loop(loop);
  }
  sd_event_unref(loop);
  return code;
}
