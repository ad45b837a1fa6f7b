// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPDATANODE_H_
#define SNMPSUBAGENT_NETSNMPDATANODE_H_

#include <memory>
#include <string>

#include "NetSNMPNode.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPTrapTrigger.h"
#include "SnmpSubAgentExport.h"

class NetSNMPAgentGuard;
struct netsnmp_agent_request_info_s;
struct netsnmp_handler_registration_s;
struct netsnmp_mib_handler_s;
struct netsnmp_request_info_s;

// A scalar: one object instance with one value.
//
// The OID is that of the instance, with its closing 0. The constructor
// registers the node if the subagent is connected; otherwise
// NetSNMPNode::RegisterMibs() does.
//
// SetNodeData() and a manager's SET call the callback or, without one, fire the
// trap.
//
// A scalar that is deleted while the subagent is disconnected stays registered:
// after the reconnection a GET or SET of it is answered with an error, until a
// new node of the same name takes its place. Delete nodes while connected, or
// after Stop().
//
// Threads: as NetSNMPNode. GetNodeData() and SetNodeData() take no lock; see
// NetSNMPNodeData.
class SNMPSUBAGENT_EXPORT NetSNMPDataNode : public NetSNMPNode,
                                            public NetSNMPTrapTrigger {
 public:
  // The node keeps a clone of `data` and becomes its owner. `oidLen` is in
  // sub-identifiers. `trapCallback` may be null and `trapName` empty.
  NetSNMPDataNode(unsigned long* oid, unsigned int oidLen,
                  const std::string& name, const NetSNMPNodeData& data,
                  void (*trapCallback)(NetSNMPDataNode*),
                  const std::string& trapName);

  // A node with an untyped value, see NetSNMPNodeData; `storage` is borrowed.
  // For real values use the other constructor.
  NetSNMPDataNode(unsigned long* oid, unsigned int oidLen,
                  const std::string& name, eNodeDataType type,
                  eNodeAccessMode access, void* storage,
                  void (*trapCallback)(NetSNMPDataNode*),
                  const std::string& trapName);

  // Withdraws the registration, if the subagent is connected, and deletes the
  // value.
  ~NetSNMPDataNode() override;

  // Registers the instance; returns whether it is registered now, also if it
  // was before. Fails for an OID that another node has registered, and for one
  // of more than 128 sub-identifiers.
  bool RegisterNode() override;
  void UnregisterNode() override;

  // The value of the scalar of that name; null if there is none. Owned by its
  // node.
  static NetSNMPNodeData* GetNodeData(const std::string& name);

  // Set the value of the scalar of that name, with notification. They always
  // return `value`, also if there is no such scalar or it has another type.
  static std::string SetNodeData(const std::string& name,
                                 const std::string& value);
  static bool SetNodeData(const std::string& name, bool value);
  static unsigned int SetNodeData(const std::string& name, unsigned int value);
  static int SetNodeData(const std::string& name, int value);

  // Fires the trap named trapName_ with this node's value, twice, and logs the
  // result of the second. Does nothing if there is no such trap.
  void DataNodeTrapTrigger();

  NetSNMPNodeData* nodeData_;  // owned; may be null
  // The agent library's; null when not registered.
  netsnmp_handler_registration_s* handlerRegistration_;

 private:
  // Built under one guard; see NetSNMPNode.
  NetSNMPDataNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                  unsigned int oidLen, const std::string& name,
                  std::unique_ptr<NetSNMPNodeData> data,
                  void (*trapCallback)(NetSNMPDataNode*), std::string trapName);
};

// The agent library's request handler of every scalar. Serves the first request
// of the list only. Returns an SNMP error number (RFC 3416).
SNMPSUBAGENT_EXPORT int var_instance_handler(
    netsnmp_mib_handler_s* handler, netsnmp_handler_registration_s* reginfo,
    netsnmp_agent_request_info_s* reqinfo, netsnmp_request_info_s* requests);

#endif  // SNMPSUBAGENT_NETSNMPDATANODE_H_
