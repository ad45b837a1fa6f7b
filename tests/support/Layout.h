// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LAYOUT_H_
#define SNMPSUBAGENT_TESTS_LAYOUT_H_

#include <algorithm>
#include <functional>
#include <vector>

// Whether `fields`, the addresses of fields or bases of one object, are given
// in the order in which they lie in memory.
inline bool LieInOrder(const std::vector<const void*>& fields) {
  const auto misplaced = std::adjacent_find(fields.begin(), fields.end(),
                                            std::greater_equal<const void*>());
  return misplaced == fields.end();
}

#endif  // SNMPSUBAGENT_TESTS_LAYOUT_H_
