// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table of what a service has anyway: its pumps, in a map of its own.
// Managers see them under their names and switch them on and off.
//
//   objects_table [host port]      where the master agent takes AgentX sessions
#include <signal.h>
#include <snmpsubagent.h>

#include <iostream>
#include <map>
#include <string>

namespace snmp = snmpsubagent;

enum class State { Off = 1, On = 2 };

struct Pump {
  int litresPerMinute = 0;
  State state = State::Off;
};

using Pumps = std::map<std::string, Pump, snmp::IndexOrder<std::string>>;

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
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.24");

  Pumps pumps;
  snmp::Table table(module, "1", pumps);  // INDEX { pumpName }
  table.Column(2, &Pump::litresPerMinute)
      .Column(3, &Pump::state, snmp::ReadWrite().Values(State::Off, State::On))
      .Changed([](const auto& change) {
        std::cout << change.key << " is "
                  << (change.after->state == State::On ? "on" : "off")
                  << std::endl;
      });

  {
    // Whenever the service changes what managers see.
    const snmp::AgentLock lock = agent.Lock();
    pumps["feed"] = {120, State::On};
    pumps["drain"] = {80, State::Off};
  }

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
