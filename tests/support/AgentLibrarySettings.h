// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_AGENTLIBRARYSETTINGS_H_
#define SNMPSUBAGENT_TESTS_AGENTLIBRARYSETTINGS_H_

#include <string>

#include "testkit/ScratchDirectory.h"

namespace support {

// Gives the agent library of this process a configuration and a directory for
// its own files, and nothing of the system's. It reads them once, when the
// first subagent starts.
class AgentLibrarySettings {
 public:
  // `application` is the subagent's name, `configuration` is for it alone.
  AgentLibrarySettings(const std::string& application,
                       const std::string& configuration);

 private:
  testkit::ScratchDirectory directory_;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_AGENTLIBRARYSETTINGS_H_
