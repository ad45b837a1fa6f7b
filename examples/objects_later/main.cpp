// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Values that take their time: a sensor on a slow bus, and a valve that needs a
// second to move. Both requests go to a thread of the service; managers are
// served meanwhile.
//
//   objects_later [host port]      where the master agent takes AgentX sessions
#include <chrono>

#include "../common/ServiceProcess.h"
#include "SlowDevice.h"

int main(int argc, char* argv[]) {
  const EndSignals signals;
  snmp::Agent agent("objects_later", OptionsFrom(argc, argv));
  SlowDevice device(agent, std::chrono::milliseconds(200));

  agent.Start();
  signals.Wait();
}
