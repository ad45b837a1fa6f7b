// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The program of which Boiler_test.cpp and plain_test.cpp are the tests.
//
//   testing [host port]      where the master agent takes AgentX sessions
#include "../common/ServiceProcess.h"
#include "Boiler.h"

int main(int argc, char* argv[]) {
  const EndSignals signals;
  snmpsubagent::Agent agent("boiler", OptionsFrom(argc, argv));
  Boiler boiler(agent);
  agent.Start();

  int celsius = 20;
  while (!signals.WaitASecond()) boiler.Measured(++celsius);
}
