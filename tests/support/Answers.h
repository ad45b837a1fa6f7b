// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ANSWERS_H_
#define SNMPSUBAGENT_TESTS_ANSWERS_H_

#include <string>
#include <vector>

#include "testkit/Manager.h"

namespace support {

// What snmpset says of one SET, varbinds as words for the tool: "None" or the
// name of the error, and behind it the object that failed.
std::string SetAt(const testkit::Manager& manager,
                  const std::vector<std::string>& words);

// What snmpget shows of an instance: type and value.
std::string ShownAt(const testkit::Manager& manager, const std::string& name);

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_ANSWERS_H_
