// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_MANAGERSVIEW_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_MANAGERSVIEW_H_

#include <string>

#include "testkit/agentx/Text.h"

// What a manager sees of a response. Whether a name without an instance belongs
// to an object depends on what has been registered for it, which is not alike;
// a master agent that has both kinds of registration tells managers the same.
inline std::string ManagersView(testkit::agentx::Response response) {
  response.sysUpTime = 0;
  for (testkit::agentx::Varbind& varbind : response.varbinds) {
    if (varbind.value.type == testkit::agentx::Type::kNoSuchObject) {
      varbind.value.type = testkit::agentx::Type::kNoSuchInstance;
    }
  }
  return testkit::agentx::Text(response);
}

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_MANAGERSVIEW_H_
