// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/AgentLibrarySettings.h"

#include <stdlib.h>

namespace support {

AgentLibrarySettings::AgentLibrarySettings(const std::string& application,
                                           const std::string& configuration) {
  directory_.Write(application + ".conf", configuration);
  setenv("SNMPCONFPATH", directory_.Path().c_str(), 1);
  setenv("SNMP_PERSISTENT_DIR", directory_.Path().c_str(), 1);
  setenv("MIBS", "", 1);
}

}  // namespace support
