// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The program of which Boiler_test.cpp and plain_test.cpp are the tests.
//
//   testing [host port]      where the master agent takes AgentX sessions
#include <signal.h>

#include <ctime>
#include <string>

#include "Boiler.h"

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmpsubagent::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmpsubagent::Agent agent("boiler", options);
  Boiler boiler(agent);
  agent.Start();

  const timespec second = {1, 0};
  int celsius = 20;
  while (sigtimedwait(&signals, nullptr, &second) < 0) {
    boiler.Measured(++celsius);
  }
}
