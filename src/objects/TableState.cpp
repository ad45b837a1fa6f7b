// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/detail/TableState.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ReadContext.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {
namespace {

// Of the row object below the table: fooTable is T, fooEntry T.1, a cell
// T.1.column.index (RFC 2578, 7.7).
constexpr SubIdentifier kEntry = 1;

// Whether managers may change a row, or this cell of it (RFC 2579,
// StorageType).
SetError CheckStorage(StorageType storage, const Column* column) {
  const bool isStorage = column && column->isStorage;
  switch (storage) {
    case StorageType::Permanent:
      return isStorage ? SetError::WrongValue : SetError::None;
    case StorageType::ReadOnly:
      return isStorage ? SetError::WrongValue : SetError::NotWritable;
    default:
      return SetError::None;
  }
}

// False once a function of the application has stopped the agent or destroyed
// the table, and perhaps the rows with it: no other one is called.
bool GoesOn(const TableState& table, const ReadContext& context) {
  return table.IsServed() && context.IsWanted();
}

}  // namespace

Column::~Column() = default;

Answer Column::ReadFor(ReadContext& context, const RowView& row) const {
  return Read(row, context.Writer()) ? Answer::Written : Answer::Absent;
}

bool Column::TakeBack(void*, const void*, const void*) const { return false; }

TableState::TableState(std::shared_ptr<ModuleState> module,
                       std::string_view oid, std::shared_ptr<RowStore> rows)
    : ManagedObject(std::move(module), oid), rows_(std::move(rows)) {}

TableState::~TableState() {
  for (const NumberedColumn& column : columns_) {
    if (column.column && column.column->required >= 0) {
      rows_->DropRequired(column.column->required);
    }
  }
}

TableState::Columns::const_iterator TableState::PlaceFrom(
    SubIdentifier number) const {
  return std::lower_bound(columns_.begin(), columns_.end(), number,
                          [](const NumberedColumn& column, SubIdentifier n) {
                            return column.number < n;
                          });
}

void TableState::AddColumn(SubIdentifier number,
                           std::unique_ptr<Column> column) {
  const auto place = PlaceFrom(number);
  if (number == 0 || (place != columns_.end() && place->number == number)) {
    throw std::invalid_argument(ToString(Name()) + ": column " +
                                std::to_string(number) +
                                (number == 0 ? " is none" : " is there twice"));
  }
  if (column && column->constraints) {
    column->constraints->RequireFor(column->type, CellName(number, {}));
  }
  NumberedColumn added{number, std::move(column)};
  columns_.reserve(columns_.size() + 1);
  if (added.column && added.column->isRequired) {
    added.column->required = rows_->AddRequired();
  }
  columns_.insert(PlaceFrom(number), std::move(added));
}

void TableState::SetStatusColumn(SubIdentifier number) {
  if (statusColumn_ != 0) {
    throw std::invalid_argument(ToString(Name()) + " has a RowStatus already");
  }
  AddColumn(number, nullptr);
  statusColumn_ = number;
  rows_->SetStatusColumn();
}

const Column* TableState::FindColumn(SubIdentifier number) const {
  const auto place = PlaceFrom(number);
  return place == columns_.end() || place->number != number
             ? nullptr
             : place->column.get();
}

bool TableState::HasRoomFor(OidView index) const {
  return Name().size() + 2 + index.size() <= Oid::kMaxSize;
}

Oid TableState::CellName(SubIdentifier column, OidView index) const {
  return Oid(Name()) + Oid{kEntry, column} + index;
}

bool TableState::WriteCell(SubIdentifier number, const RowView& row,
                           OidView index, ValueWriter& writer) const {
  const RowStore::Reading reading(*rows_);
  if (number == statusColumn_) {
    writer.Integer(static_cast<std::int32_t>(rows_->StatusOf(index)));
    return true;
  }
  const Column* column = FindColumn(number);
  return column && !rows_->IsMissing(index, column->required) &&
         column->Read(row, writer);
}

Answer TableState::ReadValue(const NumberedColumn& numbered, const RowView& row,
                             OidView index, ReadContext& context) const {
  const Column* column = numbered.column.get();
  if (!column) {
    WriteCell(numbered.number, row, index, context.Writer());
    return Answer::Written;
  }
  const RowStore::Reading reading(*rows_);
  return rows_->IsMissing(index, column->required)
             ? Answer::Absent
             : column->ReadFor(context, row);
}

Answer TableState::ReadCell(const NumberedColumn& column, const RowView& row,
                            OidView index, ReadContext& context) {
  if (!HasRoomFor(index) || !GoesOn(*this, context)) return Answer::Absent;
  const SubIdentifier below[] = {kEntry, column.number};
  if (!context.Begin(Name(), OidView(below, 2), index)) return Answer::Beyond;
  const Answer answer = ReadValue(column, row, index, context);
  if (answer == Answer::Absent) context.Cancel();
  return answer;
}

Answer TableState::Read(OidView instance, ReadContext& context) {
  if (instance.size() < 3 || !HasObjectAt(instance)) return Answer::Absent;
  RowView row;
  if (!rows_->Find(instance.After(2), row)) return Answer::Absent;
  context.SetEnd({});
  return ReadCell(*PlaceFrom(instance[1]), row, instance.After(2), context);
}

bool TableState::HasObjectAt(OidView instance) const {
  if (instance.size() < 2 || instance[0] != kEntry) return false;
  const auto place = PlaceFrom(instance[1]);
  return place != columns_.end() && place->number == instance[1];
}

Answer TableState::ReadNext(OidView instance, bool include,
                            ReadContext& context) {
  if (columns_.empty()) Warn("the table has no columns yet; see Column()");
  OidView index;
  auto column = columns_.cbegin();
  bool isIncluded = false;
  if (!instance.empty()) {
    if (instance[0] > kEntry) return Answer::Absent;
    if (instance[0] == kEntry && instance.size() > 1) {
      column = PlaceFrom(instance[1]);
      if (column != columns_.end() && column->number == instance[1]) {
        index = instance.After(2);
        isIncluded = include;
      }
    }
  }
  while (column != columns_.end()) {
    const NumberedColumn current = *column;  // Functions may add columns.
    const Answer answer = ReadColumn(current, index, isIncluded, context);
    if (answer != Answer::Absent || !GoesOn(*this, context)) return answer;
    column = PlaceFrom(current.number) + 1;
    index = {};
    isIncluded = false;
  }
  return Answer::Absent;
}

// The first cell behind `index`; rows that have none are passed over. No row
// has an empty index.
Answer TableState::ReadColumn(const NumberedColumn& column, OidView index,
                              bool include, ReadContext& context) {
  RowView row;
  IndexWriter found[2];  // the one that is found, and the one before
  int turn = 0;
  while (rows_->FindNext(index, include, row, found[turn])) {
    const Answer answer = ReadCell(column, row, found[turn].View(), context);
    if (answer != Answer::Absent || !GoesOn(*this, context)) return answer;
    index = found[turn].View();
    include = false;
    turn = 1 - turn;
  }
  return Answer::Absent;
}

void TableState::Warn(const char* what) const {
  Agent()->Log(LogLevel::Warning, ToString(Name()) + ": " + what);
}

// In the order of RFC 3416, 4.2.5.
SetError TableState::Stage(OidView instance, const ValueView& value,
                           Transaction& transaction) {
  if (!HasObjectAt(instance)) return SetError::NotWritable;
  const NumberedColumn column = *PlaceFrom(instance[1]);
  const SetError error = CheckValue(column, value);
  if (error != SetError::None) return error;
  const OidView index = instance.After(2);
  if (!rows_->MayBeRow(index)) return SetError::NoCreation;
  return StageCell(column, index, value, transaction);
}

SetError TableState::CheckValue(const NumberedColumn& numbered,
                                const ValueView& value) const {
  if (!numbered.column) {
    if (value.type != ValueType::Integer) return SetError::WrongType;
    const auto action = static_cast<RowStatus>(value.number);
    return action >= RowStatus::Active && action <= RowStatus::Destroy &&
                   action != RowStatus::NotReady
               ? SetError::None
               : SetError::WrongValue;
  }
  const Column& column = *numbered.column;
  if (!column.writable) return SetError::NotWritable;
  if (value.type != column.type) return SetError::WrongType;
  const SetError error = column.Decode(value);
  if (error != SetError::None || !column.constraints) return error;
  return column.constraints->Check(value);
}

SetError TableState::StageCell(const NumberedColumn& numbered, OidView index,
                               const ValueView& value,
                               Transaction& transaction) {
  StagedRow* staged = nullptr;
  SetError error = FindStaged(numbered, index, transaction, staged);
  if (error != SetError::None) return error;
  if (!numbered.column) {
    return staged->NoteAction(static_cast<RowStatus>(value.number),
                              CurrentVarbind(transaction));
  }
  error = numbered.column->Write(staged->Row(), index, value);
  if (error == SetError::None) staged->NoteCell(numbered.column);
  return error;
}

// The row as this SET has it so far; a copy of it if this is its first cell.
SetError TableState::FindStaged(const NumberedColumn& column, OidView index,
                                Transaction& transaction, StagedRow*& staged) {
  for (StagedRow* row : rows_->Staged()) {
    if (row->Index() != index) continue;
    if (!row->IsOf(transaction)) return SetError::ResourceUnavailable;
    staged = row;
    return CheckStorage(row->Storage(), column.column.get());
  }
  RowView row;
  const bool exists = rows_->Find(index, row);
  if (!exists && !rows_->HasStatus()) {
    if (column.column->canCreate) {
      Warn("managers make no rows, since the table has no RowStatus()");
    }
    return SetError::NoCreation;
  }
  if (exists) {
    const SetError error =
        CheckStorage(rows_->StorageOf(row.row), column.column.get());
    if (error != SetError::None) return error;
  }
  auto change =
      rows_->Stage(std::static_pointer_cast<TableState>(shared_from_this()),
                   index, exists ? row.row : nullptr);
  change->SetTransaction(transaction);
  staged = change.get();
  AddChange(transaction, std::move(change));
  return SetError::None;
}

}  // namespace snmpsubagent::detail
