// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/TableLookup.h"

#include "NetSNMPTableNode.h"
#include "nodes/NodeLookup.h"

NetSNMPTableNode* FindTable(const std::string& name) {
  return node_lookup::Cast<NetSNMPTableNode>((*NetSNMPNode::nodeMap_)[name]);
}
