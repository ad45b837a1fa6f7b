// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_SERVED_H_
#define SNMPSUBAGENT_TOOLS_CHECK_SERVED_H_

#include <cstddef>
#include <vector>

#include "check/MibModule.h"
#include "check/Report.h"
#include "check/Value.h"

namespace snmpsubagent::check {

// What a walk has found, by objects.
struct Served {
  struct Object {
    std::vector<std::size_t> instances;  // numbers in `all`
    bool faulty = false;                 // there was a finding
  };

  const MibModule& module;
  std::vector<Varbind> all;     // upwards
  std::vector<Object> objects;  // one for each of module.Objects()
  std::vector<bool> faulty;     // one for each of `all`

  Served(const MibModule& of, std::vector<Varbind> found);

  std::size_t NumberOf(const MibObject& object) const;
  const Object& Of(const MibObject& object) const;

  // Notes a finding about one instance.
  void Add(Report& report, Fault fault, std::size_t instance,
           const std::string& text);
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_SERVED_H_
