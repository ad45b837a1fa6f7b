// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableEntryNode.h"

#include <memory>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableNode.h"
#include "tables/RowPin.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

// Appends "." and the number to `key`; false, with `key` unchanged, if `value`
// is not an integer index.
bool AppendIndex(const NetSNMPNodeData& value, std::string& key) {
  const void* const number = value.NodeDataValue();
  if (!value.isIndex_ || number == nullptr) return false;
  switch (value.dataType_) {
    case eNodeDataInt:
      key += "." + std::to_string(*static_cast<const int*>(number));
      return true;
    case eNodeDataUnsignedInt:
      key += "." + std::to_string(*static_cast<const unsigned int*>(number));
      return true;
    default:
      return false;
  }
}

void Discard(Row* row) {
  RowPin::Discarded(row);
  NetSNMPNodeData::DestroyDataVector(*row);
  delete row;
}

struct RowDeleter {
  void operator()(Row* row) const { Discard(row); }
};

}  // namespace

NetSNMPTableEntryNode::NetSNMPTableEntryNode(
    unsigned long* oid, unsigned int oidLen, const std::string& name,
    const std::string& rowNamePrefix,
    const std::vector<NetSNMPNodeData*>& indexTemplate,
    unsigned int columnCount, NetSNMPTableNode* tableNode)
    : NetSNMPTableEntryNode(NetSNMPAgentGuard(), oid, oidLen, name,
                            rowNamePrefix, indexTemplate, columnCount,
                            tableNode) {}

NetSNMPTableEntryNode::NetSNMPTableEntryNode(
    const NetSNMPAgentGuard&, unsigned long* oid, unsigned int oidLen,
    const std::string& name, const std::string& rowNamePrefix,
    const std::vector<NetSNMPNodeData*>& indexTemplate,
    unsigned int columnCount, NetSNMPTableNode* tableNode)
    : NetSNMPNode(oid, oidLen, name),
      rowNamePrefix_(rowNamePrefix),
      columnCount_(columnCount),
      rowCursor_(rows_.end()),
      tableNode_(tableNode) {
  NetSNMPNodeData::CopyDataVector(indexTemplate, indexTemplate_);
  NetSNMPTableEntryNode::RegisterNode();
  if (tableNode_ != nullptr) tableNode_->TableEntryNode(this);
}

NetSNMPTableEntryNode::~NetSNMPTableEntryNode() {
  const NetSNMPAgentGuard guard;
  for (NetSNMPTableNode* table : servedBy_) table->entryNode_ = nullptr;
  while (!rows_.empty()) RemoveRow(std::string(rows_.begin()->first));
  NetSNMPNodeData::DestroyDataVector(indexTemplate_);
  LeaveRegistry();
}

bool NetSNMPTableEntryNode::RegisterNode() { return mapped_; }

int NetSNMPTableEntryNode::GetRowName(
    const std::vector<NetSNMPNodeData*>& values, std::string& rowName) const {
  rowName = rowNamePrefix_;
  int indexCount = 0;
  for (const NetSNMPNodeData* value : values) {
    if (value != nullptr && AppendIndex(*value, rowName)) ++indexCount;
  }
  return indexCount;
}

bool NetSNMPTableEntryNode::AddRow(
    const std::vector<NetSNMPNodeData*>& values) {
  std::string key;
  const int indexCount = GetRowName(values, key);
  if (indexCount != static_cast<int>(indexTemplate_.size())) return false;
  std::unique_ptr<Row, RowDeleter> row(NetSNMPNodeData::CopyDataVector(values));
  // The new row exists before the old one goes, so that nothing is lost when
  // there is no memory, and `values` may be the old row itself.
  Row*& slot = rows_[key];
  if (slot != nullptr) Discard(slot);
  slot = row.release();
  return true;
}

bool NetSNMPTableEntryNode::RemoveRow(const std::string& rowName) {
  const auto found = rows_.find(rowName);
  if (found == rows_.end()) return false;
  if (rowCursor_ == found) rowCursor_ = rows_.end();
  if (found->second != nullptr) Discard(found->second);
  rows_.erase(found);
  return true;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetRow(
    const std::string& rowName) {
  const auto found = rows_.find(rowName);
  return found == rows_.end() ? nullptr : found->second;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetFirstRow() {
  rowCursor_ = rows_.begin();
  return rowCursor_ == rows_.end() ? nullptr : rowCursor_->second;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetNextRow() {
  if (rowCursor_ != rows_.end()) ++rowCursor_;
  return rowCursor_ == rows_.end() ? nullptr : rowCursor_->second;
}
