// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_
#define SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_

#include <string>

#include "SnmpSubAgentExport.h"

class NetSNMPDataNode;

// What happens when a value of a node is set with notification: its callback is
// called or, without one, the named trap is fired. The second base of scalars
// and iterator tables.
class SNMPSUBAGENT_EXPORT NetSNMPTrapTrigger {
 public:
  // `trapCallback` may be null. `trapName` is the name of a NetSNMPTrapNode,
  // looked up each time; it may be empty or unknown.
  NetSNMPTrapTrigger(void (*trapCallback)(NetSNMPDataNode*),
                     const std::string& trapName);
  virtual ~NetSNMPTrapTrigger();

  NetSNMPTrapTrigger(const NetSNMPTrapTrigger&) = delete;
  NetSNMPTrapTrigger& operator=(const NetSNMPTrapTrigger&) = delete;

  // Runs on the thread that sets the value: for a manager's SET the subagent
  // thread, or one that waits for the master agent in a call of this library.
  // Should not throw. An exception during a SET is logged on the node and
  // fails its COMMIT with genErr; the value stays written, and over AgentX the
  // manager already has its response.
  void (*trapCallback_)(NetSNMPDataNode*);
  std::string trapName_;
};

#endif  // SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_
