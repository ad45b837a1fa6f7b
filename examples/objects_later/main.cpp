// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Values that take their time: a sensor on a slow bus, and a valve that needs a
// second to move. Both requests go to a thread of the service; managers are
// served meanwhile.
//
//   objects_later [host port]      where the master agent takes AgentX sessions
#include <signal.h>

#include <chrono>
#include <string>

#include "SlowDevice.h"

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_later", options);
  SlowDevice device(agent, std::chrono::milliseconds(200));

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
