// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Oid.h"

#include <algorithm>

namespace snmpsubagent::check {

std::string ToText(const Oid& name) {
  std::string text;
  for (const oid id : name) {
    if (!text.empty()) text += '.';
    text += std::to_string(id);
  }
  return text;
}

bool IsAtOrBelow(const Oid& name, const Oid& root) {
  return name.size() >= root.size() &&
         std::equal(root.begin(), root.end(), name.begin());
}

Oid BehindSubtree(Oid name) {
  ++name.back();
  return name;
}

Oid operator+(Oid name, const Oid& more) {
  name.insert(name.end(), more.begin(), more.end());
  return name;
}

}  // namespace snmpsubagent::check
