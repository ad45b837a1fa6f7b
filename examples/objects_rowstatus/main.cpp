// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table whose rows managers make and destroy (RFC 2579, RowStatus): the users
// of a device.
//
//   objects_rowstatus [host port]      where the master agent takes AgentX
//   sessions
#include <signal.h>

#include <string>

#include "Users.h"

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_rowstatus", options);
  const Users users(agent);

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
