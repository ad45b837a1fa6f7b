// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_PROBES_H_
#define SNMPSUBAGENT_TOOLS_CHECK_PROBES_H_

#include <string>
#include <vector>

#include "check/MibModule.h"
#include "check/Value.h"

namespace snmpsubagent::check {

// A SET to try on one object, and what it has to come to.
struct Probe {
  std::string what;  // "the value above the range"
  Value value;
  // error-status, any of these; none if the SET has to succeed.
  std::vector<long> errors;
  // What GET shows then, of a SET that succeeds.
  Value stored;
};

// SETs that SYNTAX allows: the value that the object has, and the ends of its
// ranges and sizes. How many there are does not depend on `present`.
std::vector<Probe> GoodProbes(const MibObject& object, const Value& present);

// SETs that have to be refused: a wrong type, length or value, and the value
// that it has if the object is read-only.
std::vector<Probe> RefusedProbes(const MibObject& object, const Value& present);

// Some value that SYNTAX allows, most likely to make sense: what a manager
// would write into a new row, or a new index. Different for different `seed`.
Value AnyValue(const Syntax& syntax, int seed);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_PROBES_H_
