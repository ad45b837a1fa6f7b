// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableEntryNode.h"

#include <iterator>
#include <new>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableNode.h"
#include "nodes/Watch.h"
#include "tables/RowIndex.h"
#include "tables/RowKey.h"
#include "tables/RowSelection.h"
#include "values/OwnedValues.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;
using Rows = std::map<std::string, Row*>;

// Appends "." and the number to `key`; false, with `key` unchanged, if `value`
// is not an integer index.
bool AppendIndex(const NetSNMPNodeData& value, std::string& key) {
  const void* const number = value.NodeDataValue();
  if (!value.isIndex_ || number == nullptr) return false;
  switch (value.dataType_) {
    case eNodeDataInt:
      AppendIndexNumber(*static_cast<const int*>(number), key);
      return true;
    case eNodeDataUnsignedInt:
      AppendIndexNumber(*static_cast<const unsigned int*>(number), key);
      return true;
    default:
      return false;
  }
}

void Discard(Row* row) {
  Watch::Destroyed(row);
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
    : NetSNMPTableEntryNode(
          NetSNMPAgentGuard(), oid, oidLen, name, std::string(rowNamePrefix),
          OwnedValues(indexTemplate).Get(), columnCount, tableNode) {}

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
      index_(new RowIndex(indexTemplate_)),
      selection_(nullptr) {
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
  for (NetSNMPTableNode* table : servedBy_) table->entryNode_ = nullptr;
  if (selection_ != nullptr) selection_->ForgetStore();
  for (const auto& row : rows_) {
    if (row.second != nullptr) Discard(row.second);
  }
  NetSNMPNodeData::DestroyDataVector(indexTemplate_);
  LeaveRegistry();
}

bool NetSNMPTableEntryNode::RegisterNode() { return mapped_; }

int NetSNMPTableEntryNode::GetRowName(
    const std::vector<NetSNMPNodeData*>& values, std::string& rowName) const {
  rowName.clear();
  rowName.reserve(rowNamePrefix_.size() +
                  kIndexTextSize * indexTemplate_.size());
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
  if (slot != nullptr) {
    index_->Leaving(key, *slot);
    Discard(slot);
  }
  slot = row.release();
  try {
    index_->Filed(key, *slot);
  } catch (const std::bad_alloc&) {
    // A row that is not covered is found by walking all of them.
  }
  return true;
}

bool NetSNMPTableEntryNode::RemoveRow(const std::string& rowName) {
  const auto found = rows_.find(rowName);
  if (found == rows_.end()) return false;
  if (rowCursor_ == found) rowCursor_ = rows_.end();
  if (selection_ != nullptr) selection_->Forget(found);
  if (found->second != nullptr) {
    index_->Leaving(rowName, *found->second);
    Discard(found->second);
  }
  rows_.erase(found);
  return true;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetRow(
    const std::string& rowName) {
  return HandOut(rows_.find(rowName));
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetFirstRow() {
  rowCursor_ = rows_.begin();
  return HandOut(rowCursor_);
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::GetNextRow() {
  if (rowCursor_ != rows_.end()) ++rowCursor_;
  return HandOut(rowCursor_);
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::FirstCandidate() {
  if (selection_ != nullptr) return selection_->First();
  return MoveCursor(rows_.begin());
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::NextCandidate() {
  if (selection_ != nullptr) return selection_->Next();
  return MoveCursor(rowCursor_ == rows_.end() ? rowCursor_
                                              : std::next(rowCursor_));
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::MoveCursor(
    Rows::iterator place) {
  rowCursor_ = place;
  return place == rows_.end() ? nullptr : place->second;
}

std::vector<NetSNMPNodeData*>* NetSNMPTableEntryNode::HandOut(
    Rows::iterator place) {
  if (place == rows_.end()) return nullptr;
  if (place->second != nullptr) index_->HandedOut(place->first, *place->second);
  return place->second;
}
