#include <snmpsubagent.h>

#include <atomic>

namespace snmp = snmpsubagent;

int main() {
  std::atomic<int> celsius{21};

  snmp::Agent agent("thermometer", {"tcp:127.0.0.1:1705"});
  snmp::Module module(agent, "1.3.6.1.4.1.32473.2");
  snmp::Scalar temperature(module, "1", celsius);
  snmp::Scalar limit(module, "2", 60, snmp::ReadWrite().Range(0, 90));

  agent.Run();
}
