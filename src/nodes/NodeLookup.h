// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODELOOKUP_H_
#define SNMPSUBAGENT_NODES_NODELOOKUP_H_

#include <string>
#include <typeinfo>

#include "NetSNMPNode.h"

namespace node_lookup {

// `node` if it is of class Node, else null. Called for every request; an exact
// match of types is cheaper than dynamic_cast.
template <typename Node>
Node* Cast(NetSNMPNode* node) {
  if (node == nullptr) return nullptr;
  return typeid(*node) == typeid(Node) ? static_cast<Node*>(node)
                                       : dynamic_cast<Node*>(node);
}

// The node of that name if it is of class Node, else null; null without a
// registry too.
template <typename Node>
Node* Find(const std::string& name) {
  if (NetSNMPNode::nodeMap_ == nullptr) return nullptr;
  const auto entry = NetSNMPNode::nodeMap_->find(name);
  if (entry == NetSNMPNode::nodeMap_->end()) return nullptr;
  return Cast<Node>(entry->second);
}

}  // namespace node_lookup

#endif  // SNMPSUBAGENT_NODES_NODELOOKUP_H_
