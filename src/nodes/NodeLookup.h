// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODELOOKUP_H_
#define SNMPSUBAGENT_NODES_NODELOOKUP_H_

#include <string>

#include "NetSNMPNode.h"

// The node of that name if it is of class Node, else null; null without a
// registry too.
template <typename Node>
Node* FindNode(const std::string& name) {
  if (NetSNMPNode::nodeMap_ == nullptr) return nullptr;
  const auto entry = NetSNMPNode::nodeMap_->find(name);
  if (entry == NetSNMPNode::nodeMap_->end()) return nullptr;
  return dynamic_cast<Node*>(entry->second);
}

#endif  // SNMPSUBAGENT_NODES_NODELOOKUP_H_
