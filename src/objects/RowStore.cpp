// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/detail/RowStore.h"

#include <algorithm>
#include <utility>

#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/TableState.h"

namespace snmpsubagent::detail {

RowStore::~RowStore() = default;

int RowStore::AddRequired() {
  required_.push_back(true);
  return static_cast<int>(required_.size()) - 1;
}

void RowStore::DropRequired(int which) {
  required_[static_cast<std::size_t>(which)] = false;
}

RowStatus RowStore::StatusOf(OidView index) const {
  if (inactive_.empty()) return RowStatus::Active;
  const auto found = inactive_.find(index);
  return found == inactive_.end() ? RowStatus::Active : found->second.status;
}

std::vector<bool> RowStore::MissingOf(OidView index) const {
  const auto found = inactive_.find(index);
  return found == inactive_.end() ? std::vector<bool>() : found->second.missing;
}

bool RowStore::IsMissing(OidView index, int required) const {
  if (required < 0 || inactive_.empty()) return false;
  const auto found = inactive_.find(index);
  const auto place = static_cast<std::size_t>(required);
  return found != inactive_.end() && place < found->second.missing.size() &&
         found->second.missing[place];
}

void RowStore::SetStatus(OidView index, RowStatus status,
                         std::vector<bool> missing) {
  const auto found = inactive_.find(index);
  const bool isInactive =
      status == RowStatus::NotInService || status == RowStatus::NotReady;
  if (found != inactive_.end() && isInactive) {
    found->second = {status, std::move(missing)};
  } else if (isInactive) {
    inactive_.emplace(Oid(index), Inactive{status, std::move(missing)});
  } else if (found != inactive_.end()) {
    inactive_.erase(found);
  }
}

StagedRow* RowStore::FindStaged(const Transaction& transaction,
                                OidView index) const {
  const auto found =
      std::find_if(staged_.begin(), staged_.end(), [&](const StagedRow* row) {
        return row->IsOf(transaction) && row->Index() == index;
      });
  return found == staged_.end() ? nullptr : *found;
}

void RowStore::NoteChange(OidView index) {
  for (StagedRow* staged : staged_) {
    if (staged->Index() == index) staged->NoteChange();
  }
}

void RowStore::NoteOvertaken(OidView index) {
  for (StagedRow* staged : staged_) {
    if (staged->Index() == index) staged->NoteOvertaken();
  }
}

void RowStore::NoteStatus(OidView index, RowStatus status) {
  SetStatus(index, status, {});
  for (StagedRow* staged : staged_) {
    if (staged->Index() == index) staged->NoteStatus();
  }
}

// A row that the application has put has all its cells.
void RowStore::NotePut(OidView index, bool isNew) {
  const bool isActive = isNew || StatusOf(index) == RowStatus::Active;
  SetStatus(index, isActive ? RowStatus::Active : RowStatus::NotInService, {});
  NoteOvertaken(index);
}

void RowStore::NoteErased(OidView index) {
  SetStatus(index, RowStatus::None, {});
  NoteOvertaken(index);
}

bool RowStore::IsFullFor(const StagedRow& row) {
  if (limit_ == 0) return false;
  const auto others = std::count_if(
      staged_.begin(), staged_.end(), [&](const StagedRow* staged) {
        return staged != &row && staged->Before() == RowStatus::None &&
               staged->After() != RowStatus::None && !staged->IsPut();
      });
  return CountUpTo(limit_) + static_cast<std::size_t>(others) >= limit_;
}

StagedRow::StagedRow(std::shared_ptr<TableState> table,
                     std::shared_ptr<RowStore> store, OidView index,
                     const void* row)
    : Change(table),
      table_(std::move(table)),
      store_(std::move(store)),
      index_(index),
      missingBefore_(row ? store_->MissingOf(index) : store_->Required()),
      missing_(missingBefore_),
      storage_(row ? store_->StorageOf(row) : StorageType::Volatile),
      before_(row ? store_->StatusOf(index) : RowStatus::None),
      after_(before_) {
  store_->staged_.push_back(this);
}

StagedRow::~StagedRow() {
  auto& staged = store_->staged_;
  staged.erase(std::find(staged.begin(), staged.end(), this));
}

void StagedRow::NoteCell(std::shared_ptr<const Column> column) {
  const auto place = static_cast<std::size_t>(column->required);
  if (column->required >= 0 && place < missing_.size()) missing_[place] = false;
  written_.push_back(std::move(column));
  SetChecked(false);
}

SetError StagedRow::NoteAction(RowStatus action, std::uint16_t varbind) {
  if (action_ != RowStatus::None && action_ != action) {
    return SetError::InconsistentValue;
  }
  action_ = action;
  actionVarbind_ = varbind;
  SetChecked(false);
  return SetError::None;
}

bool StagedRow::IsComplete() const {
  for (std::size_t i = 0; i < missing_.size(); ++i) {
    if (missing_[i] && store_->Required()[i]) return false;
  }
  return true;
}

SetError StagedRow::Check(std::uint16_t& varbind) {
  const std::uint16_t first = varbind;
  if (actionVarbind_ != 0) varbind = actionVarbind_;
  const SetError error =
      before_ == RowStatus::None ? DecideNew() : DecideExisting();
  if (error != SetError::None) return error;
  varbind = first;
  return IsNothing() ? SetError::None : AskCheck();
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
      if (before_ == RowStatus::Active && store_->ActiveAreFrozen()) {
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
      return !written_.empty() && before_ == RowStatus::Active &&
                     after_ == RowStatus::Active && store_->ActiveAreFrozen()
                 ? SetError::InconsistentValue
                 : SetError::None;
    case RowStatus::Destroy:
      if (storage_ == StorageType::Permanent) {
        return SetError::InconsistentValue;
      }
      after_ = RowStatus::None;
      return SetError::None;
    default:
      return SetError::InconsistentValue;
  }
}

Step StagedRow::Commit(Transaction& transaction) {
  if (IsNothing()) return Step::Done;
  return MayCommit() ? Apply(false, transaction) : Step::Refused;
}

// What the application has made of the row since it was tested is not
// overwritten.
bool StagedRow::MayCommit() const {
  return table_->IsServed() && !isChanged_ && !isOvertaken_ &&
         IsUntouched(false);
}

// What the application has made of it since stays. A row that it has put is as
// active as it was.
bool StagedRow::MayUndo() {
  if (!table_->IsServed()) return false;
  if (isOvertaken_) {
    const bool wasActive =
        before_ == RowStatus::None || before_ == RowStatus::Active;
    if (wasActive && !keepsStatus_) {
      store_->SetStatus(index_, RowStatus::Active, {});
    }
    return false;
  }
  return (!isChanged_ && IsUntouched(true)) || KeepChanges();
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
  store_->SetStatus(index_, undo ? before_ : after_,
                    undo ? missingBefore_ : missing_);
  isPutting_ = false;
}

Step StagedRow::Resumed(SetError error) {
  if (error == SetError::None) return Step::Done;
  if (!undoing_ && MayUndo()) Put(true);
  return Step::Refused;
}

Step StagedRow::Undo(Transaction& transaction) {
  if (IsNothing() || !MayUndo()) return Step::Done;
  return Apply(true, transaction);
}

void StagedRow::Finish() {
  if (!IsNothing() && table_->IsServed()) CallChanged();
}

}  // namespace snmpsubagent::detail
