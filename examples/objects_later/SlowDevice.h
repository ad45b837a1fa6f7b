// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_SLOWDEVICE_H_
#define SNMPSUBAGENT_EXAMPLES_SLOWDEVICE_H_

#include <snmpsubagent.h>

#include <chrono>
#include <string>
#include <thread>

#include "Bus.h"

namespace snmp = snmpsubagent;

// A sensor and a valve on one bus.
class SlowDevice {
 public:
  // `time` is what the sensor takes; the valve takes five times as long.
  SlowDevice(snmp::Agent& agent, std::chrono::milliseconds time)
      : time_(time), module_(agent, "1.3.6.1.4.1.32473.3.23") {
    valve_.Apply([this](int, int, const snmp::Later<snmp::SetError>& reply) {
      bus_.Post([this, reply] {
        std::this_thread::sleep_for(5 * time_);  // until it has moved
        reply.Answer(snmp::SetError::None);
      });
    });
  }

 private:
  void Measure(const snmp::Later<int>& reply) {
    bus_.Post([this, reply] {
      std::this_thread::sleep_for(time_);  // the sensor's
      reply.Answer(1013);
    });
  }

  const std::chrono::milliseconds time_;
  Bus bus_;
  snmp::Module module_;
  snmp::Scalar<int> pressure_{
      module_, "1", [this](const snmp::Later<int>& reply) { Measure(reply); }};
  snmp::Scalar<int> valve_{module_, "2", 0, snmp::ReadWrite().Range(0, 100)};
  snmp::Scalar<std::string> location_{module_, "3", "boiler room"};
};

#endif  // SNMPSUBAGENT_EXAMPLES_SLOWDEVICE_H_
