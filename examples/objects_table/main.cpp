// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table of what a service has anyway: its pumps, in a map of its own.
// Managers see them under their names and switch them on and off.
//
//   objects_table [host port]      where the master agent takes AgentX sessions
#include "../common/ServiceProcess.h"
#include "Pumps.h"

int main(int argc, char* argv[]) {
  const EndSignals signals;
  snmp::Agent agent("objects_table", OptionsFrom(argc, argv));
  Pumps pumps(agent);
  pumps.Install("feed", {120, PumpState::On});
  pumps.Install("drain", {80, PumpState::Off});

  agent.Start();
  signals.Wait();
}
