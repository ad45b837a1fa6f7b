// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODELINE_H_
#define SNMPSUBAGENT_NODES_NODELINE_H_

#include <new>

#include "NetSNMPNode.h"

// Logs on `node`. A line for which there is no memory is dropped: it must not
// keep a node half registered or end a destructor.
inline void LogLine(const NetSNMPNode& node, const char* line) {
  try {
    node.NodeLogMessage(line);
  } catch (const std::bad_alloc&) {
    // Nobody could be told.
  }
}

#endif  // SNMPSUBAGENT_NODES_NODELINE_H_
