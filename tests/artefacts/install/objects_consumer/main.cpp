// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service that is built against the installed objects library: it starts and
// stops an agent without a master agent, and prints the name and the value of
// an object that it has changed.
#include <snmpsubagent.h>

#include <iostream>

namespace snmp = snmpsubagent;

int main() {
  snmp::Agent agent("consumer", {"unix:/nonexistent/master"});
  snmp::Module module(agent, "1.3.6.1.4.1.32473.2");
  snmp::Scalar temperature(module, "1", 21, snmp::ReadWrite().Range(0, 90));
  snmp::Notification(module, "0.1").Send({temperature});
  agent.Start();
  temperature.Set(temperature.Get() + 1);
  agent.Stop();
  std::cout << snmp::ToString(temperature.State()->InstanceName()) << " "
            << temperature.Get() << std::endl;
}
