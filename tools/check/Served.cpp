// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Served.h"

#include <utility>

namespace snmpsubagent::check {

Served::Served(const MibModule& of, std::vector<Varbind> found)
    : module(of),
      all(std::move(found)),
      objects(of.Objects().size()),
      faulty(all.size()) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    const MibObject* const object = module.ObjectOf(all[i].name);
    if (object) objects[NumberOf(*object)].instances.push_back(i);
  }
}

std::size_t Served::NumberOf(const MibObject& object) const {
  return static_cast<std::size_t>(&object - module.Objects().data());
}

const Served::Object& Served::Of(const MibObject& object) const {
  return objects[NumberOf(object)];
}

void Served::Add(Report& report, Fault fault, std::size_t instance,
                 const std::string& text) {
  faulty[instance] = true;
  const Oid& name = all[instance].name;
  const MibObject* const object = module.ObjectOf(name);
  if (object) objects[NumberOf(*object)].faulty = true;
  report.Add(fault, object ? object->name : "", ToText(name), text);
}

}  // namespace snmpsubagent::check
