// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTRAPNODE_H_
#define SNMPSUBAGENT_NETSNMPTRAPNODE_H_

#include <string>
#include <vector>

#include "NetSNMPNode.h"
#include "SnmpSubAgentExport.h"

class NetSNMPAgentGuard;
class NetSNMPDataNode;
struct variable_list;

// An SNMPv2 notification (RFC 3416): snmpTrapOID.0 with the node's OID as its
// value, then the OIDs and current values of data nodes.
//
// Fire it for one node with TriggerV2Trap(node), or collect several with
// AddDataObject() and fire it with TriggerV2Trap(). A scalar that names this
// node as its trap fires it whenever its value is set.
//
// Threads: firing takes the lock of NetSNMPAgentGuard, collecting does not.
// Hold a guard from the first AddDataObject() to TriggerV2Trap() if two threads
// may use one trap node.
class SNMPSUBAGENT_EXPORT NetSNMPTrapNode : public NetSNMPNode {
 public:
  // `oid` is the notification's, `oidLen` its length in sub-identifiers. A trap
  // whose OID is longer than 128 can be built but never sent.
  NetSNMPTrapNode(unsigned long* oid, unsigned int oidLen,
                  const std::string& name);

  // Does not touch the nodes collected.
  ~NetSNMPTrapNode() override;

  // A notification needs no registration: returns whether the node is the
  // registry's entry for its name.
  bool RegisterNode() override;

  // Collects `node`, which is borrowed, for the next TriggerV2Trap(). Returns
  // true.
  virtual bool AddDataObject(NetSNMPDataNode* node);

  // Sends the notification with the nodes collected, in their order, and
  // empties the collection. Returns false, with nothing sent, if the subagent
  // is not connected, nothing was collected, or a node has no value. True means
  // that the agent library has it; an SNMPv2 trap is unconfirmed (RFC 3416).
  virtual bool TriggerV2Trap();

  // The same with `node` alone; nodes collected are dropped unsent.
  virtual bool TriggerV2Trap(NetSNMPDataNode* node);

  // Appends OID and value of `node` to the notification's variables. Returns
  // false if that fails.
  bool AddDataObjectToTrap(NetSNMPDataNode* node);

  // Number of nodes collected.
  int DataVariableCount() const;

  std::vector<NetSNMPDataNode*> dataObjects_;  // borrowed
  // Owned: snmpTrapOID.0, then the variables of the last notification built.
  variable_list* trapVarList_;

 private:
  // Built under one guard; see NetSNMPNode.
  NetSNMPTrapNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                  unsigned int oidLen, const std::string& name);
};

#endif  // SNMPSUBAGENT_NETSNMPTRAPNODE_H_
