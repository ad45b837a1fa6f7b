// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_LOGXMESSAGE_H_
#define SNMPSUBAGENT_LOGXMESSAGE_H_

#include <string>

#include "SnmpSubAgentExport.h"

// Writes one line to the device's log. `text` has no line end. The platform
// defines the levels; the subagent's own lines have level 3.
//
// Imported from the platform library. An application may define it instead.
//
// Threads: any; lines of several threads do not mix. It may be called under a
// NetSNMPAgentGuard, so it must not wait for a thread that takes one.
SNMPSUBAGENT_EXPORT void LogXMessage(unsigned int level,
                                     const std::string& text);

#endif  // SNMPSUBAGENT_LOGXMESSAGE_H_
