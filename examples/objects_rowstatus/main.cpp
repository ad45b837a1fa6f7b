// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table whose rows managers make and destroy (RFC 2579, RowStatus): the users
// of a device.
//
//   objects_rowstatus [host port]      where the master agent takes AgentX
//   sessions
#include <signal.h>
#include <snmpsubagent.h>

#include <cstdint>
#include <iostream>
#include <string>

namespace snmp = snmpsubagent;

struct User {
  std::string shell;
  std::uint32_t quota = 1000;
};
using UserChange = snmp::RowChange<std::string, User>;

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
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.26");

  snmp::Table<std::string, User> users(module, "1");  // INDEX { userName }
  users.Column(2, &User::shell, snmp::ReadCreate().Size(1, 64).Required())
      .Column(3, &User::quota, snmp::ReadCreate().Range(0, 1000000))
      .RowStatus(4)
      .Limit(100)
      .Check([](const UserChange& change) {
        return change.after && !change.after->shell.empty() &&
                       change.after->shell[0] != '/'
                   ? snmp::SetError::InconsistentValue
                   : snmp::SetError::None;
      })
      .Changed([](const UserChange& change) {
        if (change.statusAfter == snmp::RowStatus::Active) {
          std::cout << change.key << " may log in" << std::endl;
        } else if (change.statusBefore == snmp::RowStatus::Active) {
          std::cout << change.key << " is locked out" << std::endl;
        }
      });
  users.Insert("root", {"/bin/sh", 0});

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
