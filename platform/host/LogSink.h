// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_LOGSINK_H_
#define SNMPSUBAGENT_LOGSINK_H_

#include <string>

#include "SnmpSubAgentExport.h"

// Sends every further line of LogXMessage() to `sink` instead of stderr, or to
// stderr again if `sink` is null. Only the host's platform library has it.
//
// stderr lines look like "2024-05-31 09:15:02.481 [3] text": local time and the
// level in brackets.
//
// Threads: any. `sink` is called on the thread that logs, also by several
// threads at once; a call that began before a change may end after it.
SNMPSUBAGENT_EXPORT void SetLogSink(void (*sink)(unsigned int level,
                                                 const std::string& text));

#endif  // SNMPSUBAGENT_LOGSINK_H_
