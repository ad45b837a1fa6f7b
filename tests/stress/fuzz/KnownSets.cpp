// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "KnownSets.h"

#include <algorithm>

namespace known {
namespace {

constexpr unsigned int kNoCell = ~0U;

// A master agent that has not said for so long how a SET goes on has lost it.
constexpr std::chrono::seconds kForgotten{60};

// Of a row, the cell that is its StorageType.
unsigned int StorageCell(const Store& store) {
  for (const auto& [cell, kind] : store.kinds) {
    if (kind == Kind::Storage) return cell;
  }
  return kNoCell;
}

int StorageOf(const Store& store, const State& state) {
  const auto cell = state.cells.find(StorageCell(store));
  return cell == state.cells.end()
             ? kVolatile
             : std::get<std::int32_t>(cell->second.content);
}

// RFC 2579, StorageType.
Error CheckStorage(int storage, const Column& column) {
  if (storage != kPermanent && storage != kReadOnly) return kNone;
  if (column.kind == Kind::Storage) return kWrongValue;
  return storage == kReadOnly ? kNotWritable : kNone;
}

bool IsComplete(const Store& store, const State& state) {
  return std::all_of(store.required.begin(), store.required.end(),
                     [&](const auto& required) {
                       return state.cells.count(required.first) != 0;
                     });
}

bool AreSame(const Store& store, const State& a, const State& b) {
  return a.status == b.status &&
         AreSame(store.kinds.begin()->second, a.cells.begin()->second,
                 b.cells.begin()->second);
}

}  // namespace

int Sets::Change::Storage() const { return StorageOf(*store, before); }

// ---- TestSet.

void Sets::Test(std::uint32_t id, std::uint32_t packet,
                const std::vector<wire::Varbind>& varbinds) {
  Set* set = Find(id);
  if (set && set->phase != Phase::Tested) {
    responses_.push_back({packet, kGenErr, 0});
    return;
  }
  if (!set) {
    set = &sets_.emplace_back();
    set->id = id;
  }
  set->deadline = now_ + kForgotten;
  const std::size_t first = set->changes.size();
  Failure failure = StageAll(*set, varbinds);
  if (failure.error == kNone) failure = CheckAll(*set, first);
  responses_.push_back({packet, failure.error, failure.varbind});
  if (failure.error != kNone) {
    set->changes.clear();
    set->phase = Phase::Ended;
  } else if (set->tests++ > 0) {
    // The varbinds that a CommitSet names are those of the first request.
    for (std::size_t i = first; i < set->changes.size(); ++i) {
      set->changes[i].varbind = 0;
    }
  }
  ForgetEnded();
}

Sets::Failure Sets::StageAll(Set& set,
                             const std::vector<wire::Varbind>& varbinds) {
  std::uint16_t number = 0;
  for (const wire::Varbind& varbind : varbinds) {
    const Error error = Stage(set, varbind, ++number);
    if (error != kNone) return {error, number};
  }
  return {};
}

// In the order of RFC 3416, 4.2.5.
Error Sets::Stage(Set& set, const wire::Varbind& varbind,
                  std::uint16_t number) {
  const wire::Oid& name = varbind.name;
  auto found = objects_.upper_bound(name);
  if (found == objects_.begin()) return kNotWritable;
  const Object& object = (--found)->second;
  if (object.name.size() > name.size() ||
      !std::equal(object.name.begin(), object.name.end(), name.begin())) {
    return kNotWritable;
  }
  const wire::Oid rest(
      name.begin() + static_cast<std::ptrdiff_t>(object.name.size()),
      name.end());
  Store& store = *object.store;
  const bool isCell = rest.size() >= 2 && rest[0] == 1;
  if (!store.isScalar && !isCell) return kNotWritable;
  const auto column = object.columns.find(store.isScalar ? 0 : rest[1]);
  if (column == object.columns.end() || !column->second.writable) {
    return kNotWritable;
  }
  const Error error = Check(column->second.kind, varbind.value);
  if (error != kNone) return error;
  if (store.isScalar) {
    if (rest != wire::Oid{0}) return kNoCreation;
    return StageScalar(set, store, column->second, varbind.value, number);
  }
  const wire::Oid index(rest.begin() + 2, rest.end());
  if (!store.isIndex(index)) return kNoCreation;
  return StageCell(set, store, column->second, index, varbind.value, number);
}

Error Sets::StageScalar(Set& set, Store& store, const Column& column,
                        const wire::Value& value, std::uint16_t number) {
  Unit& unit = store.units.begin()->second;
  if (IsChangedByOther(set, unit)) return kResourceUnavailable;
  if (unit.state.status == kAbsent) return kInconsistentName;
  State after = unit.state;
  const Error error = MakeNew(column.kind, value, after.cells.at(0));
  if (error != kNone) return error;
  if (const Change* change = FindChange(set, unit)) {
    return AreSame(store, change->after, after) ? kNone : kInconsistentValue;
  }
  set.changes.push_back({&store, &unit, number, unit.state, after});
  return kNone;
}

Error Sets::StageCell(Set& set, Store& store, const Column& column,
                      const wire::Oid& index, const wire::Value& value,
                      std::uint16_t number) {
  Unit& unit = store.units[index];
  if (IsChangedByOther(set, unit)) return kResourceUnavailable;
  Change* change = FindChange(set, unit);
  const bool exists = unit.state.status != kAbsent;
  if (!change && !exists && !store.hasStatus) return kNoCreation;
  const State& held = change ? change->before : unit.state;
  if (held.status != kAbsent) {
    const Error error = CheckStorage(StorageOf(store, held), column);
    if (error != kNone) return error;
  }
  if (!change) {
    set.changes.push_back(
        {&store, &unit, number, unit.state, exists ? unit.state : store.fresh});
    change = &set.changes.back();
    change->after.status = unit.state.status;
  }
  if (column.kind == Kind::Status) {
    const int action = std::get<std::int32_t>(value.content);
    if (change->action != 0 && change->action != action) {
      return kInconsistentValue;
    }
    change->action = action;
    change->isChecked = false;
    change->actionVarbind = number;
    return kNone;
  }
  auto& cells = change->after.cells;
  const bool isMissing = store.required.count(column.cell) != 0;
  if (cells.count(column.cell) == 0 && !column.canCreate && !isMissing) {
    return kNoCreation;
  }
  const Error error = MakeNew(column.kind, value, cells[column.cell]);
  if (error == kNone) change->written.insert(column.cell);
  change->isChecked = false;
  return error;
}

Sets::Change* Sets::FindChange(Set& set, const Unit& unit) {
  for (Change& change : set.changes) {
    if (change.unit == &unit) return &change;
  }
  return nullptr;
}

bool Sets::IsChangedByOther(const Set& set, const Unit& unit) const {
  return std::any_of(sets_.begin(), sets_.end(), [&](const Set& other) {
    return &other != &set &&
           std::any_of(
               other.changes.begin(), other.changes.end(),
               [&](const Change& change) { return change.unit == &unit; });
  });
}

// All that the request has staged or added to.
Sets::Failure Sets::CheckAll(Set& set, std::size_t first) {
  for (std::size_t i = 0; i < set.changes.size(); ++i) {
    Change& change = set.changes[i];
    if (!change.store->isServed || change.isChecked) continue;
    const Failure failure = CheckOne(change);
    change.isChecked = true;
    if (failure.error == kNone) continue;
    return {failure.error, i < first ? std::uint16_t{0} : failure.varbind};
  }
  return {};
}

Sets::Failure Sets::CheckOne(Change& change) const {
  if (!change.store->isScalar) {
    const Error error = change.before.status == kAbsent
                            ? DecideNew(change)
                            : DecideExisting(change);
    const bool hasAction = change.actionVarbind != 0;
    if (error != kNone) {
      return {error, hasAction ? change.actionVarbind : change.varbind};
    }
    if (change.IsNothing()) return {};
  }
  return {change.unit->check, change.varbind};
}

// The table of states of RFC 2579, RowStatus: of a row that there is not.
Error Sets::DecideNew(Change& change) const {
  const bool isComplete = IsComplete(*change.store, change.after);
  change.after.status = kAbsent;
  switch (change.action) {
    case 0:
      return kInconsistentName;
    case kDestroy:
      return kNone;
    case kCreateAndGo:
      if (!isComplete) return kInconsistentValue;
      change.after.status = kActive;
      break;
    case kCreateAndWait:
      change.after.status = isComplete ? kNotInService : kNotReady;
      break;
    default:
      return kInconsistentValue;
  }
  return IsFullFor(change) ? kResourceUnavailable : kNone;
}

// And of one that there is.
Error Sets::DecideExisting(Change& change) {
  const bool isComplete = IsComplete(*change.store, change.after);
  const int before = change.before.status;
  const bool isFrozen = before == kActive && change.store->activeAreFrozen;
  change.after.status = before;
  switch (change.action) {
    case 0:
      if (isFrozen) return kInconsistentValue;
      if (before == kNotReady && isComplete) {
        change.after.status = kNotInService;
      }
      return kNone;
    case kActive:
    case kNotInService:
      change.after.status = change.action;
      if (!isComplete) return kInconsistentValue;
      return isFrozen && !change.written.empty() && change.action == kActive
                 ? kInconsistentValue
                 : kNone;
    case kDestroy:
      change.after.status = kAbsent;
      return change.Storage() == kPermanent ? kInconsistentValue : kNone;
    default:
      return kInconsistentValue;
  }
}

bool Sets::IsFullFor(const Change& change) const {
  if (change.store->limit == 0) return false;
  std::size_t rows = change.store->Size();
  for (const Set& set : sets_) {
    for (const Change& other : set.changes) {
      if (&other != &change && other.store == change.store &&
          other.before.status == kAbsent && other.after.status != kAbsent &&
          !other.isPut) {
        ++rows;
      }
    }
  }
  return rows >= change.store->limit;
}

// ---- The other phases.

void Sets::Commit(std::uint32_t id, std::uint32_t packet) {
  Set* const set = Find(id);
  if (!set || set->phase == Phase::Ended) {
    responses_.push_back({packet, kCommitFailed, 0});
    return;
  }
  if (set->phase == Phase::Committed) {
    responses_.push_back({packet, kNone, 0});
    return;
  }
  set->commits.push_back(packet);
  if (set->phase == Phase::Tested) {
    set->phase = Phase::Committing;
    Proceed(*set);
  }
  ForgetEnded();
}

void Sets::Undo(std::uint32_t id, std::uint32_t packet) {
  Set* const set = Find(id);
  if (!set) {
    responses_.push_back({packet, kNone, 0});
    return;
  }
  set->undos.push_back(packet);
  switch (set->phase) {
    case Phase::Committing:
      set->undoWanted = true;
      break;
    case Phase::Committed:
      StartUndo(*set, set->changes.size());
      Proceed(*set);
      break;
    case Phase::Undoing:
      break;
    default:
      EndUndo(*set);
  }
  ForgetEnded();
}

void Sets::Cleanup(std::uint32_t id) {
  Set* const set = Find(id);
  if (!set) return;
  switch (set->phase) {
    case Phase::Committing:
      set->undoWanted = true;
      break;
    case Phase::Committed:
      for (const Change& change : set->changes) {
        if (!change.IsNothing() && change.store->isServed) ++finals_;
      }
      set->phase = Phase::Ended;
      set->undoFailed = false;
      break;
    case Phase::Undoing:
      break;
    default:
      set->undoFailed = false;
      EndUndo(*set);
  }
  ForgetEnded();
}

void Sets::Lose() {
  for (Set& set : sets_) {
    set.isLost = true;
    Abandon(set);
  }
  ForgetEnded();
}

// Nobody is told any more what becomes of it.
void Sets::Abandon(Set& set) {
  set.commits.clear();
  set.undos.clear();
  if (set.phase == Phase::Tested || set.phase == Phase::Ended) EndUndo(set);
  if (set.phase == Phase::Committing) set.undoWanted = true;
  if (set.phase == Phase::Committed) {
    StartUndo(set, set.changes.size());
    Proceed(set);
  }
}

void Sets::Answer(const Unit& unit, Error error) {
  for (Set& set : sets_) {
    if (!set.waiting || Waiting(set).unit != &unit) continue;
    Resume(set, error);
    break;
  }
  ForgetEnded();
}

void Sets::Pass(Time time) {
  now_ += time;
  for (Set& set : sets_) {
    if (now_ < set.deadline) continue;
    if (set.waiting) {
      Resume(set, kGenErr);
    } else {
      Abandon(set);
    }
  }
  ForgetEnded();
}

// Whose Apply function has not answered yet.
Sets::Change& Sets::Waiting(Set& set) {
  return set.changes[set.phase == Phase::Committing ? set.next : set.next - 1];
}

void Sets::Resume(Set& set, Error error) {
  Change& change = Waiting(set);
  if (error != kNone && set.phase == Phase::Committing &&
      change.store->isServed && MayUndo(change)) {
    Restore(change);
  }
  set.waiting = false;
  Take(set, error == kNone ? Step::Done : Step::Refused);
  Proceed(set);
}

void Sets::NoteChange(const Unit& unit) {
  for (Set& set : sets_) {
    if (Change* change = FindChange(set, unit)) change->isChanged = true;
  }
}

void Sets::NoteOvertaken(const Unit& unit) {
  for (Set& set : sets_) {
    if (Change* change = FindChange(set, unit)) change->isOvertaken = true;
  }
}

Sets::Set* Sets::Find(std::uint32_t id) {
  for (Set& set : sets_) {
    if (set.id == id && !set.isLost) return &set;
  }
  return nullptr;
}

// One whose undoing has failed stays until the master agent has been told.
void Sets::ForgetEnded() {
  sets_.remove_if([](const Set& set) {
    return set.phase == Phase::Ended && !set.undoFailed;
  });
}

void Sets::Respond(std::vector<std::uint32_t>& packets, Error error,
                   std::uint16_t index) {
  for (const std::uint32_t packet : std::exchange(packets, {})) {
    responses_.push_back({packet, error, index});
  }
}

void Sets::Proceed(Set& set) {
  set.deadline = now_ + kForgotten;
  while (!set.waiting) {
    if (set.phase == Phase::Committing && set.undoWanted) {
      StartUndo(set, set.next);
    } else if (set.phase == Phase::Committing &&
               set.next == set.changes.size()) {
      set.phase = Phase::Committed;
      Respond(set.commits, kNone, 0);
    } else if (set.phase == Phase::Committing) {
      Take(set, CommitOne(set.changes[set.next]));
    } else if (set.phase == Phase::Undoing && set.next > 0) {
      Take(set, UndoOne(set.changes[set.next - 1]));
    } else {
      if (set.phase == Phase::Undoing) EndUndo(set);
      return;
    }
  }
}

void Sets::Take(Set& set, Step step) {
  if (step == Step::Waiting) {
    set.waiting = true;
    set.deadline = now_ + answerTime_;
  } else if (set.phase == Phase::Undoing) {
    set.undoFailed |= step == Step::Refused;
    --set.next;
  } else if (step == Step::Done) {
    ++set.next;
  } else {
    set.failure = set.changes[set.next].varbind;
    StartUndo(set, set.next);
  }
}

void Sets::StartUndo(Set& set, std::size_t count) {
  set.phase = Phase::Undoing;
  set.next = count;
}

void Sets::EndUndo(Set& set) {
  set.phase = Phase::Ended;
  set.changes.clear();
  const bool isUntold = set.undos.empty() && !set.commits.empty();
  Respond(set.commits, kCommitFailed, set.failure);
  Respond(set.undos, set.undoFailed ? kUndoFailed : kNone, 0);
  set.undoFailed &= isUntold;
}

// Of a scalar that the application has changed since it was tested.
bool Sets::StillAllowed(Change& change) {
  const Unit& unit = *change.unit;
  if (unit.state.status == kAbsent) return false;
  if (AreSame(*change.store, unit.state, change.before)) return true;
  if (change.store->kinds.begin()->second == Kind::Lock) return false;
  change.before = unit.state;
  return unit.check == kNone;
}

// Whether there is something to undo: what the application has made of it
// meanwhile stays, but for what a setter is to undo.
bool Sets::MayUndo(Change& change) {
  const State& state = change.unit->state;
  if (!change.store->isScalar) {
    if (change.isOvertaken) {
      ReleaseStatus(change);
      return false;
    }
    const bool isAsPut = !change.isChanged &&
                         (!change.store->isCompared || state == change.after);
    return isAsPut || KeepChanges(change);
  }
  return change.store->hasSetter ||
         (state.status != kAbsent &&
          AreSame(*change.store, state, change.after));
}

// Of a row that the application has put: it is as active as it was.
void Sets::ReleaseStatus(Change& change) {
  const bool wasActive =
      change.before.status == kAbsent || change.before.status == kActive;
  int& status = change.unit->state.status;
  if (wasActive && status == kNotInService) status = kActive;
}

// A setter takes a value also where the getter tells none.
void Sets::Restore(Change& change) {
  State& state = change.unit->state;
  const int status = state.status;
  state = change.before;
  if (change.store->isScalar) state.status = status;
  change.isPut = false;
}

// Of a row: cells that are as the SET has made them go back, and so does one
// that it has made.
bool Sets::KeepChanges(Change& change) {
  State kept = change.unit->state;
  if (kept.status == kAbsent || change.after.status == kAbsent) return false;
  if (change.before.status == kAbsent) return true;
  bool takesBack = change.before.status != change.after.status;
  kept.status = change.before.status;
  for (const unsigned int cell : change.written) {
    const auto now = kept.cells.find(cell);
    if (now == kept.cells.end() || !(now->second == change.after.cells[cell])) {
      continue;
    }
    takesBack = true;
    const auto before = change.before.cells.find(cell);
    if (before == change.before.cells.end()) {
      kept.cells.erase(now);
    } else {
      now->second = before->second;
    }
  }
  change.before = kept;
  return takesBack;
}

bool Sets::SetterRefuses(const Change& change) {
  return change.store->hasSetter && change.unit->setterRefuses;
}

Sets::Step Sets::CommitOne(Change& change) {
  Unit& unit = *change.unit;
  if (change.IsNothing()) return Step::Done;
  if (!change.store->isServed) return Step::Refused;
  if (change.store->isScalar) {
    if (!StillAllowed(change) || SetterRefuses(change)) return Step::Refused;
  } else if (change.isChanged || change.isOvertaken ||
             (change.store->isCompared && !(unit.state == change.before))) {
    return Step::Refused;
  }
  unit.state = change.after;
  change.isPut = true;
  const Step step = Apply(change);
  if (step == Step::Refused) Restore(change);
  return step;
}

Sets::Step Sets::UndoOne(Change& change) {
  if (change.IsNothing() || !change.store->isServed) return Step::Done;
  if (!MayUndo(change)) return Step::Done;
  if (change.store->isScalar && SetterRefuses(change)) return Step::Refused;
  Restore(change);
  return Apply(change);
}

Sets::Step Sets::Apply(Change& change) {
  toBeApplied_.push_back(change.unit);
  switch (change.unit->apply) {
    case Way::Accept:
      return Step::Done;
    case Way::Later:
      return change.store->answersLater ? Step::Waiting : Step::Done;
    default:
      return Step::Refused;
  }
}

}  // namespace known
