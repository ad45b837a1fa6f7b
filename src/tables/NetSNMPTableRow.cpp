// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableRow.h"

#include <memory>

namespace {

// A clone of `value` as a table cell.
std::unique_ptr<NetSNMPNodeData> CellOf(const NetSNMPNodeData& value,
                                        bool isIndex) {
  std::unique_ptr<NetSNMPNodeData> cell(value.Clone());
  cell->tableData_ = true;
  cell->isIndex_ = isIndex;
  return cell;
}

}  // namespace

NetSNMPTableRow::NetSNMPTableRow(const std::vector<NetSNMPNodeData*>& values)
    : indexCursor_(0) {
  try {
    for (const NetSNMPNodeData* value : values) {
      if (value == nullptr) continue;
      if (value->isIndex_) {
        AddIndex(*value, false);
      } else {
        AppendData(*value, false);
      }
    }
    RebuildTableRow();
  } catch (...) {
    EmptyRow();
    throw;
  }
}

NetSNMPTableRow::~NetSNMPTableRow() { EmptyRow(); }

void NetSNMPTableRow::AddIndex(const NetSNMPNodeData& value, bool rebuild) {
  const std::unique_ptr<NetSNMPNodeData> cell = CellOf(value, true);
  cell->columnNumber_ = static_cast<unsigned int>(indexValues_.size()) + 1;
  NetSNMPNodeData::CatDataVector(indexValues_, *cell);
  if (rebuild) RebuildTableRow();
}

void NetSNMPTableRow::AppendData(const NetSNMPNodeData& value, bool rebuild) {
  const std::unique_ptr<NetSNMPNodeData> cell = CellOf(value, false);
  NetSNMPNodeData::CatDataVector(dataValues_, *cell);
  if (rebuild) RebuildTableRow();
}

void NetSNMPTableRow::RebuildTableRow() {
  NetSNMPNodeData::CopyDataVector(indexValues_, fullRow_);
  auto column = static_cast<unsigned int>(indexValues_.size());
  for (NetSNMPNodeData* value : dataValues_) value->columnNumber_ = ++column;
  NetSNMPNodeData::CatDataVector(dataValues_, fullRow_);
}

void NetSNMPTableRow::EmptyRow() {
  NetSNMPNodeData::DestroyDataVector(fullRow_);
  NetSNMPNodeData::DestroyDataVector(indexValues_);
  NetSNMPNodeData::DestroyDataVector(dataValues_);
}

NetSNMPNodeData* NetSNMPTableRow::GetFirstIndex() {
  indexCursor_ = 0;
  return indexValues_.empty() ? nullptr : indexValues_.front();
}

NetSNMPNodeData* NetSNMPTableRow::GetNextIndex() {
  if (indexCursor_ < indexValues_.size()) ++indexCursor_;
  return indexCursor_ < indexValues_.size() ? indexValues_[indexCursor_]
                                            : nullptr;
}

int NetSNMPTableRow::IndexCount() const {
  return static_cast<int>(indexValues_.size());
}
