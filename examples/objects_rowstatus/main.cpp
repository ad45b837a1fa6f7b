// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table whose rows managers make and destroy (RFC 2579, RowStatus): the users
// of a device.
//
//   objects_rowstatus [host port]      where the master agent takes AgentX
//   sessions
#include "../common/ServiceProcess.h"
#include "Users.h"

int main(int argc, char* argv[]) {
  const EndSignals signals;
  snmp::Agent agent("objects_rowstatus", OptionsFrom(argc, argv));
  const Users users(agent);

  agent.Start();
  signals.Wait();
}
