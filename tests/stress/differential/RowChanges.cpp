// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "RowChanges.h"

#include <array>

#include "NetSNMPTableEntryNode.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;
using Change = void (*)(Rows& rows, Random& random);

void RemoveRow(Rows& rows, Random& random) {
  auto& stored = rows.store->rows_;
  if (stored.empty()) return;
  const std::string key = random.Element(stored).first;
  rows.store->RemoveRow(key);
}

// A row that the store returns, which the application may change; null if there
// is none.
Row* HandedOut(Rows& rows, Random& random) {
  auto& stored = rows.store->rows_;
  if (stored.empty()) return nullptr;
  if (!random.OneIn(4)) {
    return rows.store->GetRow(random.Element(stored).first);
  }
  Row* row = rows.store->GetFirstRow();
  for (std::uint32_t steps = random.Below(stored.size()); steps > 0; --steps) {
    row = rows.store->GetNextRow();
  }
  return row;
}

// A value of a row that is handed out; null if there is none.
NetSNMPNodeData* SomeValue(Rows& rows, Random& random) {
  Row* const row = HandedOut(rows, random);
  return row == nullptr || row->empty() ? nullptr : random.Element(*row);
}

void WriteValue(Rows& rows, Random& random) {
  NetSNMPNodeData* const value = SomeValue(rows, random);
  if (value == nullptr) return;
  const int number = random.Between(-2, 30);
  value->NodeDataValue(number, false);
  value->NodeDataValue(static_cast<unsigned int>(number), false);
  value->NodeDataValue(std::string("written"), false);
}

// What was an index is a cell then, or the other way round.
void TurnIndexAndCell(Rows& rows, Random& random) {
  NetSNMPNodeData* const value = SomeValue(rows, random);
  if (value != nullptr) value->isIndex_ = !value->isIndex_;
}

void TakeStorage(Rows& rows, Random& random) {
  NetSNMPNodeData* const value = SomeValue(rows, random);
  if (value != nullptr) value->DeleteLocalData();
}

void ChangeVariable(Rows& rows, Random& random) {
  if (rows.variables.empty()) return;
  Variables& variables = random.Element(rows.variables);
  variables.number = random.Between(-1, 40);
  variables.count = static_cast<unsigned int>(variables.number);
  variables.text = "changed";
}

void MoveCursor(Rows& rows, Random& random) {
  rows.store->GetFirstRow();
  for (std::uint32_t steps = random.Below(4); steps > 0; --steps) {
    rows.store->GetNextRow();
  }
}

// Moves a row to another key in `rows_` directly.
void RenameRow(Rows& rows, Random& random) {
  auto& stored = rows.store->rows_;
  if (stored.empty()) return;
  auto entry = stored.extract(random.Element(stored).first);
  rows.store->rowCursor_ = stored.end();
  entry.key() += random.OneOf({".0", ".5", "x"});
  const auto result = stored.insert(std::move(entry));
  if (!result.inserted) {
    NetSNMPNodeData::DestroyDataVector(*result.node.mapped());
    delete result.node.mapped();
  }
}

// Adds a copy of a row under another key to `rows_` directly.
void InsertCopy(Rows& rows, Random& random) {
  auto& stored = rows.store->rows_;
  if (stored.empty()) return;
  const Row& source = *random.Element(stored).second;
  const std::string key = "copy" + std::to_string(random.Below(5));
  if (stored.count(key) != 0) return;
  stored[key] = NetSNMPNodeData::CopyDataVector(source);
}

constexpr std::array<Change, 7> kOddChanges{
    WriteValue, TurnIndexAndCell, ChangeVariable, ChangeVariable,
    MoveCursor, RenameRow,        InsertCopy};

}  // namespace

void ChangeRows(Rows& rows, Random& random) {
  // As many rows come as go, around the number to begin with.
  const bool many =
      static_cast<int>(rows.store->rows_.size()) > rows.shape.rows;
  if (rows.shape.storageless && random.OneIn(10)) {
    TakeStorage(rows, random);
  } else if (rows.shape.odd && random.OneIn(2)) {
    kOddChanges.at(random.Below(kOddChanges.size()))(rows, random);
  } else if (random.OneIn(many ? 3 : 2)) {
    AddRandomRow(rows, random);
  } else {
    RemoveRow(rows, random);
  }
}
