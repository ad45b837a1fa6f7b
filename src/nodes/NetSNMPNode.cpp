// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPNode.h"

#include <algorithm>

#include "ISNMPSubAgent.h"
#include "NetSNMPAgentGuard.h"
#include "nodes/LiveSubAgents.h"
#include "nodes/Watch.h"

std::map<std::string, NetSNMPNode*>* NetSNMPNode::nodeMap_ = nullptr;
ISNMPSubAgent* NetSNMPNode::snmpSubAgent_ = nullptr;
void (*NetSNMPNode::NodeMsgLogger_)(unsigned int level,
                                    const std::string& text) = nullptr;
unsigned int NetSNMPNode::NodeMsgLogType_ = 0;

namespace {

NetSNMPNode* Find(const std::string& name) {
  const auto entry = NetSNMPNode::nodeMap_->find(name);
  return entry == NetSNMPNode::nodeMap_->end() ? nullptr : entry->second;
}

// Calls `visit` with each node, in the order of their names. `visit` may change
// the registry, up to removing it, so the walk continues from the name and not
// from the iterator.
template <typename Visit>
void ForEachNode(const Visit& visit) {
  const NetSNMPAgentGuard guard;
  std::string name;
  for (bool first = true; NetSNMPNode::nodeMap_ != nullptr; first = false) {
    const auto& map = *NetSNMPNode::nodeMap_;
    const auto entry = first ? map.begin() : map.upper_bound(name);
    if (entry == map.end()) return;
    name = entry->first;
    if (entry->second != nullptr) visit(name, entry->second);
  }
}

}  // namespace

NetSNMPNode::NetSNMPNode(unsigned long* oid, unsigned int oidLen,
                         const std::string& name)
    : nodeOID_(nullptr),
      nodeOIDLen_(oidLen),
      nodeName_(name),
      registered_(false),
      mapped_(false) {
  try {
    NetSNMPNode::Initialize(oid, oidLen);
  } catch (...) {
    delete[] nodeOID_;
    throw;
  }
}

NetSNMPNode::~NetSNMPNode() {
  const NetSNMPAgentGuard guard;
  delete[] nodeOID_;
  LeaveRegistry();
  Watch::Destroyed(this);
}

void NetSNMPNode::NodeLogMessage(const std::string& message) const {
  if (NodeMsgLogger_ == nullptr) return;
  NodeMsgLogger_(NodeMsgLogType_, "SNMP: Node = " + nodeName_ + "; " + message);
}

bool NetSNMPNode::RegisterNode() { return false; }

void NetSNMPNode::UnregisterNode() {}

unsigned long* NetSNMPNode::NodeOID() const { return nodeOID_; }

unsigned int NetSNMPNode::NodeOIDLen() const { return nodeOIDLen_; }

std::string NetSNMPNode::NodeName() const { return nodeName_; }

void NetSNMPNode::Initialize(unsigned long* oid, unsigned int oidLen) {
  const NetSNMPAgentGuard guard;
  if (CopyOID(oid, oidLen) == 0 || nodeMap_ == nullptr) return;
  const auto entry = nodeMap_->emplace(nodeName_, this);
  if (entry.second) {
    mapped_ = true;
    return;
  }
  NetSNMPNode* const older = entry.first->second;
  nodeMap_->erase(entry.first);
  delete older;
  mapped_ = false;
  // The virtual operation is called once more, and the first copy of the OID is
  // not released: both are part of the contract with subclasses. The caller's
  // OID may have been that of the node just destroyed.
  Initialize(nodeOID_, oidLen);
}

unsigned int NetSNMPNode::CopyOID(unsigned long* oid, unsigned int oidLen) {
  if (oid == nullptr || oidLen == 0) return 0;
  nodeOID_ = new unsigned long[oidLen];
  CopyOID(oid, oidLen, nodeOID_, oidLen);
  return oidLen;
}

void NetSNMPNode::CopyOID(unsigned long* src, unsigned int srcLen,
                          unsigned long* dst, unsigned int dstLen) {
  if (srcLen != 0 && dstLen >= srcLen) std::copy_n(src, srcLen, dst);
}

void NetSNMPNode::RegisterMibs() {
  ForEachNode(
      [](const std::string&, NetSNMPNode* node) { node->RegisterNode(); });
}

void NetSNMPNode::ReregisterMibs() {
  ForEachNode([](const std::string& name, NetSNMPNode* node) {
    node->UnregisterNode();
    // A request served meanwhile may have replaced the node.
    if (nodeMap_ != nullptr && Find(name) == node) node->RegisterNode();
  });
}

int NetSNMPNode::DeleteNodes() {
  const NetSNMPAgentGuard guard;
  int count = 0;
  while (nodeMap_ != nullptr && !nodeMap_->empty()) {
    const auto first = nodeMap_->begin();
    NetSNMPNode* const node = first->second;
    nodeMap_->erase(first);
    delete node;
    ++count;
  }
  return count;
}

void NetSNMPNode::DeleteNodeMap() {
  const NetSNMPAgentGuard guard;
  if (nodeMap_ == nullptr) return;
  DeleteNodes();
  delete nodeMap_;
  nodeMap_ = nullptr;
}

bool NetSNMPNode::SubAgentConnected() {
  return live_subagents::Contains(snmpSubAgent_) && snmpSubAgent_->Connected();
}

void NetSNMPNode::LeaveRegistry() {
  if (nodeMap_ != nullptr && mapped_) nodeMap_->erase(nodeName_);
  mapped_ = false;
}
