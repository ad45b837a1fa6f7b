// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableEntryNode.h"

#include <new>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableNode.h"
#include "nodes/Watch.h"
#include "tables/RowKey.h"
#include "tables/RowLookup.h"
#include "tables/RowSelection.h"
#include "values/ClonedValues.h"

namespace {

using Row = RowIndex::Row;
using Rows = RowIndex::Rows;

void Discard(Row* row) {
  Watch::Destroyed(row);
  NetSNMPNodeData::DestroyDataVector(*row);
  delete row;
}

struct RowDeleter {
  void operator()(Row* row) const { Discard(row); }
};

// A row for the application, which may change it.
Row* HandOut(const NetSNMPTableEntryNode& store, Rows::const_iterator place) {
  if (place == store.rows_.end()) return nullptr;
  if (place->second != nullptr) {
    RowLookup::Of(store).index.MakeVolatile(place->first, *place->second);
  }
  return place->second;
}

}  // namespace

NetSNMPTableEntryNode::NetSNMPTableEntryNode(
    unsigned long* oid, unsigned int oidLen, const std::string& name,
    const std::string& rowNamePrefix,
    const std::vector<NetSNMPNodeData*>& indexTemplate,
    unsigned int columnCount, NetSNMPTableNode* tableNode)
    // In braces, so that the guard comes before the copies.
    : NetSNMPTableEntryNode{NetSNMPAgentGuard(),
                            oid,
                            oidLen,
                            name,
                            std::string(rowNamePrefix),
                            ClonedValues(indexTemplate).Get(),
                            columnCount,
                            tableNode} {}

NetSNMPTableEntryNode::NetSNMPTableEntryNode(
    const NetSNMPAgentGuard&, unsigned long* oid, unsigned int oidLen,
    const std::string& name, const std::string& rowNamePrefix,
    const std::vector<NetSNMPNodeData*>& indexTemplate,
    unsigned int columnCount, NetSNMPTableNode* tableNode)
    : NetSNMPNode(oid, oidLen, name),
      rowNamePrefix_(rowNamePrefix),
      columnCount_(columnCount),
      rowCursor_(rows_.end()),
      tableNode_(tableNode),
      lookup_(new RowLookup(*this)),
      reserved_() {
  NetSNMPNodeData::CopyDataVector(indexTemplate, indexTemplate_);
  NetSNMPTableEntryNode::RegisterNode();
  try {
    if (tableNode_ != nullptr) tableNode_->TableEntryNode(this);
  } catch (...) {
    NetSNMPNodeData::DestroyDataVector(indexTemplate_);
    throw;
  }
}

NetSNMPTableEntryNode::~NetSNMPTableEntryNode() {
  const NetSNMPAgentGuard guard;
  for (NetSNMPTableNode* table : lookup_->tables) table->entryNode_ = nullptr;
  if (lookup_->selection != nullptr) lookup_->selection->ForgetStore();
  for (const auto& row : rows_) {
    if (row.second != nullptr) Discard(row.second);
  }
  NetSNMPNodeData::DestroyDataVector(indexTemplate_);
  LeaveRegistry();
}

bool NetSNMPTableEntryNode::RegisterNode() { return mapped_; }

int NetSNMPTableEntryNode::GetRowName(
    const std::vector<NetSNMPNodeData*>& values, std::string& rowName) const {
  return row_key::Write(rowNamePrefix_, values, rowName);
}

bool NetSNMPTableEntryNode::AddRow(
    const std::vector<NetSNMPNodeData*>& values) {
  std::string key;
  const int indexCount = GetRowName(values, key);
  if (indexCount != static_cast<int>(indexTemplate_.size())) return false;
  std::unique_ptr<Row, RowDeleter> row(NetSNMPNodeData::CopyDataVector(values));
  // The new row is created before the old one is deleted, so that nothing is
  // lost without memory, and `values` may be the old row itself.
  Row*& slot = rows_[key];
  if (slot != nullptr) {
    lookup_->index.Remove(key, *slot);
    Discard(slot);
  }
  slot = row.release();
  try {
    lookup_->index.Add(key, *slot);
  } catch (const std::bad_alloc&) {
    // A row that is not covered is found by walking all of them.
  }
  return true;
}

bool NetSNMPTableEntryNode::RemoveRow(const std::string& rowName) {
  const auto found = rows_.find(rowName);
  if (found == rows_.end()) return false;
  if (rowCursor_ == found) rowCursor_ = rows_.end();
  if (lookup_->selection != nullptr) lookup_->selection->Forget(found);
  if (found->second != nullptr) {
    lookup_->index.Remove(rowName, *found->second);
    Discard(found->second);
  }
  rows_.erase(found);
  return true;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetRow(
    const std::string& rowName) {
  return HandOut(*this, rows_.find(rowName));
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetFirstRow() {
  rowCursor_ = rows_.begin();
  return HandOut(*this, rowCursor_);
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetNextRow() {
  if (rowCursor_ != rows_.end()) ++rowCursor_;
  return HandOut(*this, rowCursor_);
}
