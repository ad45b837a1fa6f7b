// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataNode.h"

#include <utility>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTrapNode.h"
#include "adapter/Deferred.h"
#include "nodes/NodeLookup.h"
#include "nodes/NodeRegistration.h"
#include "nodes/Watch.h"

namespace {

template <typename Value>
void SetValue(const std::string& name, const Value& value) {
  NetSNMPNodeData* const data = NetSNMPDataNode::GetNodeData(name);
  if (data != nullptr) data->NodeDataValue(value, true);
}

}  // namespace

NetSNMPDataNode::NetSNMPDataNode(unsigned long* oid, unsigned int oidLen,
                                 const std::string& name,
                                 const NetSNMPNodeData& data,
                                 void (*trapCallback)(NetSNMPDataNode*),
                                 const std::string& trapName)
    // In braces, so that the guard comes before the copies.
    : NetSNMPDataNode{NetSNMPAgentGuard(),
                      oid,
                      oidLen,
                      name,
                      std::unique_ptr<NetSNMPNodeData>(data.Clone()),
                      trapCallback,
                      trapName} {}

NetSNMPDataNode::NetSNMPDataNode(unsigned long* oid, unsigned int oidLen,
                                 const std::string& name, eNodeDataType type,
                                 eNodeAccessMode access, void* storage,
                                 void (*trapCallback)(NetSNMPDataNode*),
                                 const std::string& trapName)
    : NetSNMPDataNode(oid, oidLen, name,
                      NetSNMPNodeData(type, access, storage, nullptr),
                      trapCallback, trapName) {}

NetSNMPDataNode::NetSNMPDataNode(const NetSNMPAgentGuard&, unsigned long* oid,
                                 unsigned int oidLen, const std::string& name,
                                 std::unique_ptr<NetSNMPNodeData> data,
                                 void (*trapCallback)(NetSNMPDataNode*),
                                 std::string trapName)
    : NetSNMPNode(oid, oidLen, name),
      NetSNMPTrapTrigger(trapCallback, trapName),
      nodeData_(data.release()),
      handlerRegistration_(nullptr) {
  if (nodeData_ == nullptr) return;
  nodeData_->ownerNode_ = this;
  NetSNMPDataNode::RegisterNode();
}

NetSNMPDataNode::~NetSNMPDataNode() {
  const NetSNMPAgentGuard guard;
  // Not only in the base class: a callback may build a node of this name while
  // the withdrawal waits for the master agent, and must not find a
  // half-destroyed one.
  LeaveRegistry();
  NetSNMPDataNode::UnregisterNode();
  delete nodeData_;
}

bool NetSNMPDataNode::RegisterNode() {
  const NetSNMPAgentGuard guard;
  if (registered_ || !mapped_ || !SubAgentConnected()) return registered_;
  if (nodeData_ == nullptr || nodeData_->tableData_) return registered_;
  if (node_registration::MustWait(*this)) return registered_;
  const int created = NetSNMP::create_snmp_handler_registration(
      &handlerRegistration_, nodeName_.c_str(), var_instance_handler, nodeOID_,
      nodeOIDLen_, nodeData_->NodeHandlerModes());
  registered_ = NetSNMP::snmp_succeeded(created) != 0;
  if (registered_) {
    const Watch watch(this);
    const int result = NetSNMP::register_snmp_handler(handlerRegistration_);
    if (!watch.Alive()) return false;
    // It may have been withdrawn meanwhile.
    registered_ = registered_ && NetSNMP::snmp_succeeded(result) != 0;
  }
  // What the agent library refuses, it has freed.
  if (!registered_) handlerRegistration_ = nullptr;
  node_registration::Log(
      *this, registered_ ? "Net-SNMP data node registration was successful."
                         : "Net-SNMP data node registration failed.");
  return registered_;
}

void NetSNMPDataNode::UnregisterNode() {
  const NetSNMPAgentGuard guard;
  if (!registered_) return;
  registered_ = false;
  auto* const registration = std::exchange(handlerRegistration_, nullptr);
  if (!SubAgentConnected()) {
    node_registration::Log(
        *this,
        "Net-SNMP data node unregistration could not complete- disconnected "
        "subagent.");
  } else if (registration != nullptr && nodeData_ != nullptr &&
             !nodeData_->tableData_) {
    const Watch watch(this);
    const int result = deferred::Withdraw(registration);
    if (!watch.Alive()) return;
    node_registration::Log(
        *this, NetSNMP::snmp_succeeded(result) != 0
                   ? "Net-SNMP data node unregistration was successful."
                   : "Net-SNMP data node unregistration failed.");
  }
}

NetSNMPNodeData* NetSNMPDataNode::GetNodeData(const std::string& name) {
  const auto* const node = node_lookup::Find<NetSNMPDataNode>(name);
  return node == nullptr ? nullptr : node->nodeData_;
}

std::string NetSNMPDataNode::SetNodeData(const std::string& name,
                                         const std::string& value) {
  std::string result = value;
  SetValue(name, value);
  return result;
}

bool NetSNMPDataNode::SetNodeData(const std::string& name, bool value) {
  SetValue(name, value);
  return value;
}

unsigned int NetSNMPDataNode::SetNodeData(const std::string& name,
                                          unsigned int value) {
  SetValue(name, value);
  return value;
}

int NetSNMPDataNode::SetNodeData(const std::string& name, int value) {
  SetValue(name, value);
  return value;
}

void NetSNMPDataNode::DataNodeTrapTrigger() {
  const NetSNMPAgentGuard guard;
  auto* const trap = node_lookup::Find<NetSNMPTrapNode>(trapName_);
  if (trap == nullptr) return;
  // Sent twice: a notification is never confirmed, and one may be lost.
  trap->TriggerV2Trap(this);
  const bool fired = trap->TriggerV2Trap(this);
  NodeLogMessage("Trap = " + trapName_ +
                 (fired ? "; data node trap fired."
                        : "; firing of data node trap failed."));
}
