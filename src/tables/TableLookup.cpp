// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/TableLookup.h"

#include "NetSNMPTableNode.h"

NetSNMPTableNode* FindTable(const std::string& name) {
  return dynamic_cast<NetSNMPTableNode*>((*NetSNMPNode::nodeMap_)[name]);
}
