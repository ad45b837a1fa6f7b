// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table that is filled when managers ask, and at most every ten seconds: the
// files of a folder with their sizes.
//
//   objects_loaded_table [host port]
//
// Host and port are where the master agent takes AgentX sessions.
#include <signal.h>

#include <string>

#include "Files.h"

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_loaded_table", options);
  const Files files(agent, "/etc");

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
