// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table of what a service has anyway: its pumps, in a map of its own.
// Managers see them under their names and switch them on and off.
//
//   objects_table [host port]      where the master agent takes AgentX sessions
#include <signal.h>

#include <string>

#include "Pumps.h"

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_table", options);
  Pumps pumps(agent);
  pumps.Install("feed", {120, PumpState::On});
  pumps.Install("drain", {80, PumpState::Off});

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
