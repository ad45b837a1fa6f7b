// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_BOILER_H_
#define SNMPSUBAGENT_EXAMPLES_BOILER_H_

#include <snmpsubagent.h>

// A boiler: its temperature, a limit that managers set, and a notification when
// it gets hotter than that. What a test builds is this class; the program adds
// the agent's options and a loop.
class Boiler {
 public:
  explicit Boiler(snmpsubagent::Agent& agent)
      : agent_(agent), module_(agent, "1.3.6.1.4.1.32473.3.30") {}

  // Called by the device with each measurement.
  void Measured(int celsius) {
    const snmpsubagent::AgentLock lock = agent_.Lock();
    celsius_.Set(celsius);
    if (celsius > limit_.Get()) hot_.Send({celsius_, limit_});
  }

 private:
  snmpsubagent::Agent& agent_;
  snmpsubagent::Module module_;
  snmpsubagent::Scalar<int> celsius_{module_, "1", 20};
  snmpsubagent::Scalar<int> limit_{module_, "2", 80,
                                   snmpsubagent::ReadWrite().Range(0, 90)};
  snmpsubagent::Notification hot_{module_, "0.1"};
};

#endif  // SNMPSUBAGENT_EXAMPLES_BOILER_H_
