// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A test of a service without a test framework: the kit throws what goes wrong,
// and this program what it did not expect.
#include <snmpsubagent/testing.h>

#include <exception>
#include <iostream>
#include <stdexcept>

#include "Boiler.h"

namespace snmp = snmpsubagent;
using snmp::testing::Value;

namespace {

void Expect(const Value& expected, const Value& actual) {
  if (actual == expected) return;
  throw std::runtime_error("expected " + ToString(expected) + ", got " +
                           ToString(actual));
}

void TestBoiler() {
  snmp::testing::Master master;
  snmp::Agent agent("boiler", {master.Address()});
  Boiler boiler(agent);
  agent.Start();  // on a thread of its own
  master.WaitForRegistrations(1);

  boiler.Measured(55);
  Expect(55, master.Get("1.3.6.1.4.1.32473.3.30.1.0"));
  master.Set("1.3.6.1.4.1.32473.3.30.2.0", 70);
  Expect(70, master.Get("1.3.6.1.4.1.32473.3.30.2.0"));
}

}  // namespace

int main() {
  try {
    TestBoiler();
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
    return 1;
  }
}
