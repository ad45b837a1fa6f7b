// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a value notifies and logs on the scalar that owns it.
#include <typeinfo>

#include "NetSNMPDataNode.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPTrapTrigger.h"
#include "nodes/Watch.h"

NetSNMPTrapTrigger::NetSNMPTrapTrigger(void (*trapCallback)(NetSNMPDataNode*),
                                       const std::string& trapName)
    : trapCallback_(trapCallback), trapName_(trapName) {}

NetSNMPTrapTrigger::~NetSNMPTrapTrigger() = default;

void NetSNMPNodeData::OnSetNodeValue() const {
  NetSNMPDataNode* const owner = ownerNode_;
  if (!notifyEnabled_ || owner == nullptr) return;
  if (tableData_ || owner->trapCallback_ == nullptr) {
    owner->DataNodeTrapTrigger();
    return;
  }
  const Watch watch(owner);
  owner->trapCallback_(owner);
  if (watch.Alive()) owner->NodeLogMessage("Trigger callback called.");
}

void NetSNMPNodeData::NodeDataLogMessage(const std::string& message) const {
  if (ownerNode_ == nullptr) return;
  // Skip rendering when nobody listens, unless the owner may override
  // NodeLogMessage().
  if (NetSNMPNode::NodeMsgLogger_ == nullptr &&
      typeid(*ownerNode_) == typeid(NetSNMPDataNode)) {
    return;
  }
  ownerNode_->NodeLogMessage("Node Data = " + NodeDataToString() + "; " +
                             message);
}

void NetSNMPNodeData::ValueSet(bool notify) const {
  static const std::string kMessage = "data value set.";
  const Watch watch(ownerNode_);
  if (notify) OnSetNodeValue();
  if (watch.Alive()) NodeDataLogMessage(kMessage);
}
