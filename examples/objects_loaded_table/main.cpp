// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table that is filled when managers ask, and at most every ten seconds: the
// files of a folder with their sizes.
//
//   objects_loaded_table [host port]
//
// Host and port are where the master agent takes AgentX sessions.
#include "../common/ServiceProcess.h"
#include "Files.h"

int main(int argc, char* argv[]) {
  const EndSignals signals;
  snmp::Agent agent("objects_loaded_table", OptionsFrom(argc, argv));
  const Files files(agent, "/etc");

  agent.Start();
  signals.Wait();
}
