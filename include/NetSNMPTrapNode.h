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

// An SNMPv2 notification (RFC 3416). The node's OID identifies it: the master
// agent sends it on as the value of snmpTrapOID.0, with the OIDs and current
// values of data nodes behind it.
//
// Fire it with one node by TriggerV2Trap(node), or collect several with
// AddDataObject() and fire them with TriggerV2Trap(). A scalar that names this
// node as its trap fires it whenever its value is set.
//
// Threads: firing takes the lock of NetSNMPAgentGuard. Collecting does not:
// hold a guard from the first AddDataObject() to TriggerV2Trap() if two threads
// may use one trap node.
class SNMPSUBAGENT_EXPORT NetSNMPTrapNode : public NetSNMPNode {
 public:
  // `oid` is the notification's, `oidLen` its length in sub-identifiers. A trap
  // whose OID is longer than 128 can be built but never sent.
  NetSNMPTrapNode(unsigned long* oid, unsigned int oidLen,
                  const std::string& name);

  // Data nodes collected are not touched.
  ~NetSNMPTrapNode() override;

  // A notification needs no registration: returns whether the node is the
  // registry's entry for its name.
  bool RegisterNode() override;

  // Collects `node` for the next TriggerV2Trap(); always true. The node is
  // borrowed and must live until then.
  virtual bool AddDataObject(NetSNMPDataNode* node);

  // Sends the notification with the nodes collected, in their order. Returns
  // false, with nothing sent, if the subagent is not connected, nothing was
  // collected, or a node has no value. The collection is empty afterwards in
  // any case. Returns true when the notification was handed to the agent
  // library; whether it arrives is not known (RFC 3416, unconfirmed).
  virtual bool TriggerV2Trap();

  // The same with `node` alone; nodes collected are dropped unsent.
  virtual bool TriggerV2Trap(NetSNMPDataNode* node);

  // Appends OID and value of `node` to the notification's variables. Returns
  // false if that fails.
  bool AddDataObjectToTrap(NetSNMPDataNode* node);

  // Number of nodes collected.
  int DataVariableCount() const;

  std::vector<NetSNMPDataNode*> dataObjects_;  // borrowed
  // Owned. The first variable is snmpTrapOID.0; behind it stand those of the
  // last notification built.
  variable_list* trapVarList_;

 private:
  // Constructed under one guard, so that no other thread meets a half-built
  // node in the registry.
  NetSNMPTrapNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                  unsigned int oidLen, const std::string& name);
};

#endif  // SNMPSUBAGENT_NETSNMPTRAPNODE_H_
