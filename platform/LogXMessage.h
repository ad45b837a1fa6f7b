// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_LOGXMESSAGE_H_
#define SNMPSUBAGENT_LOGXMESSAGE_H_

#include <string>

#include "SnmpSubAgentExport.h"

// Writes one line to the device's log. `text` has no line end. What a `level`
// means is the platform's business; the subagent's own lines have level 3.
//
// Imported from the platform library. An application that defines the function
// itself takes that one's place.
//
// Threads: any; lines of several threads do not mix. It may be called under a
// NetSNMPAgentGuard and so must not wait for a thread that asks for one.
SNMPSUBAGENT_EXPORT void LogXMessage(unsigned int level,
                                     const std::string& text);

#endif  // SNMPSUBAGENT_LOGXMESSAGE_H_
