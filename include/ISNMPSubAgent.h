// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ISNMPSUBAGENT_H_
#define SNMPSUBAGENT_ISNMPSUBAGENT_H_

#include <string>

#include "SnmpSubAgentExport.h"

class ISNMPSubAgentCallback;

// The subagent as nodes see it through NetSNMPNode::snmpSubAgent_, implemented
// by SNMPSubAgent. A test may use an implementation of its own. Nodes whose
// subagent has been destroyed are disconnected.
class SNMPSUBAGENT_EXPORT ISNMPSubAgent {
 public:
  ISNMPSubAgent();
  ISNMPSubAgent(const ISNMPSubAgent&);
  ISNMPSubAgent& operator=(const ISNMPSubAgent&) = default;

  // Whether the AgentX session to the master agent is up. Nodes ask before they
  // register, unregister or send a trap. Threads: any.
  virtual bool Connected() const = 0;

  // For the application; the library never calls it.
  virtual void ApplicationOperation() = 0;

  // Called each time the AgentX session has come up, before the receivers: the
  // place to register nodes, see NetSNMPNode::RegisterMibs().
  // Threads: the subagent thread, holding the lock of NetSNMPAgentGuard.
  virtual void OnSubAgentConnected() = 0;

  // Adds a receiver of connection changes under a name. A name in use is not an
  // error: the first receiver stays. `callback` is borrowed and may be null.
  // Threads: before Start(), or after Stop(); not from within a receiver.
  virtual void RegisterSubAgentCallback(const std::string& callbackName,
                                        ISNMPSubAgentCallback* callback) = 0;

  // Removes the receiver of that name; an unknown name is not an error.
  // Threads: as above.
  virtual void UnregisterSubAgentCallback(const std::string& callbackName) = 0;

  // Calls SubAgentStateChanged(state) on every receiver in the byte order of
  // their names, and then rethrows the first exception of a receiver.
  virtual void NotifySubAgentCallbacks(int state) = 0;

 protected:
  ~ISNMPSubAgent();
};

#endif  // SNMPSUBAGENT_ISNMPSUBAGENT_H_
