// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/detail/RowStore.h"

#include <algorithm>
#include <utility>

#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/TableState.h"

namespace snmpsubagent::detail {

RowStore::~RowStore() = default;

void RowStore::NoteChange(OidView index) {
  for (StagedRow* staged : staged_) {
    if (staged->Index() == index) staged->NoteChange();
  }
}

bool RowStore::IsFullFor(const StagedRow& row) const {
  if (limit_ == 0) return false;
  const auto others = std::count_if(
      staged_.begin(), staged_.end(), [&](const StagedRow* staged) {
        return staged != &row && staged->Before() == RowStatus::None &&
               staged->After() != RowStatus::None && !staged->IsPut();
      });
  return Size() + static_cast<std::size_t>(others) >= limit_;
}

StagedRow::StagedRow(std::shared_ptr<TableState> table,
                     std::shared_ptr<RowStore> store, OidView index,
                     RowStatus status)
    : Change(table),
      table_(std::move(table)),
      store_(std::move(store)),
      index_(index),
      missingBefore_(table_->MissingOf(index, status)),
      missing_(missingBefore_),
      before_(status),
      after_(status) {
  store_->staged_.push_back(this);
}

StagedRow::~StagedRow() {
  auto& staged = store_->staged_;
  staged.erase(std::find(staged.begin(), staged.end(), this));
}

void StagedRow::NoteCell(int required) {
  changesCells_ = true;
  if (required >= 0) missing_[static_cast<std::size_t>(required)] = false;
}

SetError StagedRow::NoteAction(RowStatus action, std::uint16_t varbind) {
  if (action_ != RowStatus::None && action_ != action) {
    return SetError::InconsistentValue;
  }
  action_ = action;
  actionVarbind_ = varbind;
  return SetError::None;
}

bool StagedRow::IsComplete() const {
  return std::find(missing_.begin(), missing_.end(), true) == missing_.end();
}

SetError StagedRow::Check(std::uint16_t& varbind) {
  const std::uint16_t first = varbind;
  if (actionVarbind_ != 0) varbind = actionVarbind_;
  const SetError error =
      before_ == RowStatus::None ? DecideNew() : DecideExisting();
  if (error != SetError::None) return error;
  varbind = first;
  if (before_ == RowStatus::None && after_ == RowStatus::None) {
    return SetError::None;  // destroyed, and never was
  }
  return AskCheck();
}

// The first column of RFC 2579's table of states.
SetError StagedRow::DecideNew() {
  switch (action_) {
    case RowStatus::CreateAndGo:
      if (!IsComplete()) return SetError::InconsistentValue;
      after_ = RowStatus::Active;
      break;
    case RowStatus::CreateAndWait:
      after_ = IsComplete() ? RowStatus::NotInService : RowStatus::NotReady;
      break;
    case RowStatus::Destroy:
      return SetError::None;
    case RowStatus::None:
      return SetError::InconsistentName;
    default:
      return SetError::InconsistentValue;
  }
  return store_->IsFullFor(*this) ? SetError::ResourceUnavailable
                                  : SetError::None;
}

// The other columns.
SetError StagedRow::DecideExisting() {
  switch (action_) {
    case RowStatus::None:
      if (before_ == RowStatus::Active && table_->ActiveRowsAreFrozen()) {
        return SetError::InconsistentValue;
      }
      if (before_ == RowStatus::NotReady && IsComplete()) {
        after_ = RowStatus::NotInService;
      }
      return SetError::None;
    case RowStatus::Active:
    case RowStatus::NotInService:
      if (!IsComplete()) return SetError::InconsistentValue;
      after_ = action_;
      return changesCells_ && before_ == RowStatus::Active &&
                     after_ == RowStatus::Active &&
                     table_->ActiveRowsAreFrozen()
                 ? SetError::InconsistentValue
                 : SetError::None;
    case RowStatus::Destroy:
      if (table_->StorageOf(Row()) == StorageType::Permanent) {
        return SetError::InconsistentValue;
      }
      after_ = RowStatus::None;
      return SetError::None;
    default:
      return SetError::InconsistentValue;
  }
}

Step StagedRow::Commit(Transaction& transaction) {
  if (!table_->IsServed() || overtaken_) return Step::Refused;
  return Apply(false, transaction);
}

Step StagedRow::Apply(bool undo, Transaction& transaction) {
  undoing_ = undo;
  Put(undo);
  Step step;
  try {
    step = CallApply(undo, transaction);
  } catch (...) {
    ReportException(*table_);
    step = Step::Refused;
  }
  return step == Step::Refused ? Resumed(SetError::CommitFailed) : step;
}

// Has the store hold the row as it will be, or as it was.
void StagedRow::Put(bool undo) {
  isPutting_ = true;
  isPut_ = !undo;
  if (undo) {
    Restore();
  } else {
    Store();
  }
  table_->KeepMissing(index_, (undo ? before_ : after_) == RowStatus::NotReady
                                  ? undo ? missingBefore_ : missing_
                                  : std::vector<bool>());
  isPutting_ = false;
}

Step StagedRow::Resumed(SetError error) {
  if (error == SetError::None) return Step::Done;
  if (!undoing_ && table_->IsServed() && !overtaken_) Put(true);
  return Step::Refused;
}

Step StagedRow::Undo(Transaction& transaction) {
  // What the application has made of the row meanwhile stays.
  if (!table_->IsServed() || overtaken_) return Step::Done;
  return Apply(true, transaction);
}

void StagedRow::Finish() {
  if (table_->IsServed()) CallChanged();
}

}  // namespace snmpsubagent::detail
