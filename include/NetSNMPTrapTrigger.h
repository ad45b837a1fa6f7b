// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_
#define SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_

#include <string>

#include "SnmpSubAgentExport.h"

class NetSNMPDataNode;

// What happens when a value of a node is set with notification: the
// application's callback is called or, without one, the named trap is fired.
// The second base of scalars and iterator tables.
class SNMPSUBAGENT_EXPORT NetSNMPTrapTrigger {
 public:
  // `trapCallback` may be null. `trapName` is the name of a NetSNMPTrapNode,
  // looked up each time; it may be empty or unknown.
  NetSNMPTrapTrigger(void (*trapCallback)(NetSNMPDataNode*),
                     const std::string& trapName);
  virtual ~NetSNMPTrapTrigger();

  NetSNMPTrapTrigger(const NetSNMPTrapTrigger&) = delete;
  NetSNMPTrapTrigger& operator=(const NetSNMPTrapTrigger&) = delete;

  // Runs on the thread that sets the value: the subagent thread for a
  // manager's SET. Must not throw: what it throws during a SET is logged and
  // answered with genErr.
  void (*trapCallback_)(NetSNMPDataNode*);
  std::string trapName_;
};

#endif  // SNMPSUBAGENT_NETSNMPTRAPTRIGGER_H_
