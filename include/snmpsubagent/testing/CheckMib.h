// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CHECKMIB_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CHECKMIB_H_

#include <ostream>
#include <string>
#include <vector>

#include "snmpsubagent/testing/Manager.h"

namespace snmpsubagent::testing {

// How a module is checked; see snmpsubagent-check(1).
struct CheckOptions {
  // Folders of MIB files, beside those of Net-SNMP.
  std::vector<std::string> mibs;
  // Modules whose objects are not foreign where the module's are.
  std::vector<std::string> modules;
  // Tries SETs too, and makes rows; what it changes is written back.
  bool set = false;
};

// Whether a service serves what its MIB says, and the report for a reader.
struct Conformance {
  bool conforms = false;
  std::string report;
};
std::ostream& operator<<(std::ostream& stream, const Conformance& conformance);

// Compares what the service shows to managers of a MIB module with the module:
// objects, types, lengths, ranges, enumerations, access, indexes, order.
//
//   const auto conformance = CheckMib(master, "THERMAL-EXAMPLE-MIB",
//   {{"mibs"}}); EXPECT_TRUE(conformance.conforms) << conformance;
//
// Runs snmpsubagent-check, which is to be in PATH. Throws std::runtime_error if
// it is not, or says that it cannot check.
Conformance CheckMib(Manager& manager, const std::string& module,
                     const CheckOptions& options = {});

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_CHECKMIB_H_
