// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ISNMPSUBAGENTCALLBACK_H_
#define SNMPSUBAGENT_ISNMPSUBAGENTCALLBACK_H_

#include "SnmpSubAgentExport.h"

// A receiver of connection changes, implemented by the application and
// registered with SNMPSubAgent::RegisterSubAgentCallback(). The library never
// deletes it.
class SNMPSUBAGENT_EXPORT ISNMPSubAgentCallback {
 public:
  // `state` is 1 when the AgentX session to the master agent has come up and 0
  // when it has been lost.
  //
  // Threads: runs holding the lock of NetSNMPAgentGuard, on the subagent thread
  // or, for 0, on one that finds the session lost while it waits for the master
  // agent in a call of this library. It must not register or unregister
  // receivers, nor call Start(), Stop() or IsRunning() of the subagent.
  virtual void SubAgentStateChanged(int state) = 0;

 protected:
  ~ISNMPSubAgentCallback() = default;
};

#endif  // SNMPSUBAGENT_ISNMPSUBAGENTCALLBACK_H_
