// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/NodeRegistry.h"

#include <map>
#include <string>

#include "NetSNMPNode.h"

namespace support {

NodeRegistry::NodeRegistry() {
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
}

NodeRegistry::~NodeRegistry() { NetSNMPNode::DeleteNodeMap(); }

}  // namespace support
