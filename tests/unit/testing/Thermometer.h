// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_THERMOMETER_H_
#define SNMPSUBAGENT_TESTS_THERMOMETER_H_

#include <snmpsubagent.h>
#include <snmpsubagent/testing.h>

#include <string>
#include <vector>

namespace snmp = snmpsubagent;

constexpr char kCelsius[] = "1.3.6.1.4.1.32473.2.1.0";
constexpr char kLimit[] = "1.3.6.1.4.1.32473.2.2.0";
constexpr char kPlace[] = "1.3.6.1.4.1.32473.2.3.0";
constexpr char kOverheated[] = "1.3.6.1.4.1.32473.2.0.1";

// A service with one of most things, below a subtree of the tests.
class Thermometer {
 public:
  explicit Thermometer(snmp::Agent& agent,
                       const std::string& subtree = "1.3.6.1.4.1.32473.2")
      : module_(agent, subtree),
        celsius(module_, "1", 21),
        limit(module_, "2", 60, snmp::ReadWrite().Range(0, 90)),
        place(module_, "3", std::string("boiler room"),
              snmp::ReadWrite().Size(1, 20)),
        overheated(module_, "0.1") {}

 private:
  snmp::Module module_;

 public:
  snmp::Scalar<int> celsius;
  snmp::Scalar<int> limit;
  snmp::Scalar<std::string> place;
  snmp::Notification overheated;
};

// Options of an agent of that master agent, quiet.
inline snmp::AgentOptions At(const snmp::testing::Master& master) {
  snmp::AgentOptions options;
  options.master = master.Address();
  options.log = [](snmp::LogLevel, const std::string&) {};
  return options;
}

// The names of the varbinds, relative to the OID.
inline std::vector<std::string> NamesOf(
    const std::vector<snmp::testing::Varbind>& varbinds,
    const snmp::Oid& behind) {
  std::vector<std::string> names;
  for (const auto& varbind : varbinds) {
    names.push_back(snmp::ToString(varbind.name.View().After(behind.size())));
  }
  return names;
}

#endif  // SNMPSUBAGENT_TESTS_THERMOMETER_H_
