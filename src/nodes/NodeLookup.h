// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODELOOKUP_H_
#define SNMPSUBAGENT_NODES_NODELOOKUP_H_

#include <string>
#include <typeinfo>

#include "NetSNMPNode.h"

// `node` if it is of class Node, else null. Each request asks, and mostly of
// the class itself: that is told without walking its bases.
template <typename Node>
Node* NodeCast(NetSNMPNode* node) {
  if (node == nullptr) return nullptr;
  return typeid(*node) == typeid(Node) ? static_cast<Node*>(node)
                                       : dynamic_cast<Node*>(node);
}

// The node of that name if it is of class Node, else null; null without a
// registry too.
template <typename Node>
Node* FindNode(const std::string& name) {
  if (NetSNMPNode::nodeMap_ == nullptr) return nullptr;
  const auto entry = NetSNMPNode::nodeMap_->find(name);
  if (entry == NetSNMPNode::nodeMap_->end()) return nullptr;
  return NodeCast<Node>(entry->second);
}

#endif  // SNMPSUBAGENT_NODES_NODELOOKUP_H_
