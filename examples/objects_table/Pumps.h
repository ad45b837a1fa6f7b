// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_PUMPS_H_
#define SNMPSUBAGENT_EXAMPLES_PUMPS_H_

#include <snmpsubagent.h>

#include <iostream>
#include <map>
#include <string>

namespace snmp = snmpsubagent;

enum class PumpState { Off = 1, On = 2 };

struct Pump {
  int litresPerMinute = 0;
  PumpState state = PumpState::Off;
};

// The pumps of a service, in a map of its own, and the table in which managers
// see them.
class Pumps {
 public:
  explicit Pumps(snmp::Agent& agent)
      : agent_(agent),
        module_(agent, "1.3.6.1.4.1.32473.3.24"),
        table_(module_, "1", pumps_) {  // INDEX { pumpName }
    table_.Column(2, &Pump::litresPerMinute)
        .Column(3, &Pump::state,
                snmp::ReadWrite().Values(PumpState::Off, PumpState::On))
        .Changed([](const auto& change) {
          const bool isOn = change.after->state == PumpState::On;
          std::cout << change.key << " is " << (isOn ? "on" : "off")
                    << std::endl;
        });
  }

  void Install(const std::string& name, const Pump& pump) {
    // Whenever the service changes what managers see.
    const snmp::AgentLock lock = agent_.Lock();
    pumps_[name] = pump;
  }

 private:
  snmp::Agent& agent_;
  snmp::Module module_;
  std::map<std::string, Pump, snmp::IndexOrder<std::string>> pumps_;
  snmp::Table<std::string, Pump> table_;
};

#endif  // SNMPSUBAGENT_EXAMPLES_PUMPS_H_
