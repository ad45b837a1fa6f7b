// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/CellOwner.h"

#include <utility>

#include "NetSNMP.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"

CellOwner::CellOwner(const NetSNMPTableNode& table, const std::string& rowKey,
                     const variable_list& varbind, const NetSNMPNodeData& cell)
    : table_(table, rowKey),
      store_(*table.entryNode_, rowKey),
      node_(new NetSNMPDataNode(
          varbind.name, static_cast<unsigned int>(varbind.name_length), rowKey,
          cell, table.trapCallback_, table.trapName_)),
      watch_(node_) {}

CellOwner::~CellOwner() {
  if (watch_.Alive()) delete node_;
}

CellOwner::KeptAside::KeptAside(const NetSNMPNode& node,
                                const std::string& name) {
  if (node.mapped_ && node.nodeName_ == name) {
    entry_ = NetSNMPNode::nodeMap_->extract(name);
  }
}

CellOwner::KeptAside::~KeptAside() {
  if (!entry_.empty() && NetSNMPNode::nodeMap_ != nullptr) {
    NetSNMPNode::nodeMap_->insert(std::move(entry_));
  }
}
