// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Transaction.h"

#include <algorithm>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"
#include "objects/ObjectIndex.h"
#include "objects/SetCall.h"
#include "objects/TimedCall.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {
namespace {

// A master agent that has not said for so long how a SET goes on has lost it.
constexpr std::chrono::seconds kForgotten{60};

agentx::Error WireError(SetError error) {
  return static_cast<agentx::Error>(error);
}

}  // namespace

// Tells that a change is at work, also if it ends with an exception.
class Transaction::Running {
 public:
  explicit Running(Transaction& transaction) : transaction_(transaction) {
    transaction_.running_ = true;
  }
  ~Running() { transaction_.running_ = false; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Transaction& transaction_;
};

Transaction::Transaction(AgentState& agent, std::uint32_t id)
    : agent_(agent), id_(id), epoch_(agent.SessionEpoch()) {}

bool Transaction::IsNamed(std::uint32_t id) const {
  return id_ == id && epoch_ == agent_.SessionEpoch();
}

Change* Transaction::Find(const ManagedObject& object) const {
  const auto found = std::find_if(
      changes_.begin(), changes_.end(),
      [&](const auto& change) { return &change->Object() == &object; });
  return found == changes_.end() ? nullptr : found->get();
}

void Transaction::Add(std::unique_ptr<Change> change) {
  varbinds_.reserve(changes_.size() + 1);
  changes_.push_back(std::move(change));
  varbinds_.push_back(varbind_);
}

void Transaction::Test(const agentx::Request& request,
                       const ObjectIndex* index) {
  deadline_ = Now() + kForgotten;
  if (phase_ != Phase::Tested) {
    agent_.Respond(request.header, agentx::Error::GenErr, 0);
    return;
  }
  const auto keep = shared_from_this();
  const std::size_t first = changes_.size();
  Failure failure;
  {
    const Running running(*this);
    failure = Stage(request, index);
    if (failure.error == agentx::Error::None) failure = Check(first);
  }
  if (undoWanted_ || failure.error != agentx::Error::None) EndUndo();
  // The varbinds that a CommitSet names are those of the first request.
  if (isTested_ && first < varbinds_.size()) {
    std::fill(varbinds_.begin() + static_cast<std::ptrdiff_t>(first),
              varbinds_.end(), std::uint16_t{0});
  }
  isTested_ = true;
  agent_.Respond(request.header, failure.error, failure.index);
}

Transaction::Failure Transaction::Stage(const agentx::Request& request,
                                        const ObjectIndex* index) {
  varbind_ = 0;
  for (const agentx::Varbind& varbind : *request.varbinds) {
    ++varbind_;
    ManagedObject* found = index ? index->Containing(varbind.name) : nullptr;
    if (!found) return {agentx::Error::NotWritable, varbind_};
    const auto object = found->shared_from_this();
    SetError error;
    try {
      error = object->Stage(varbind.name.After(object->Name().size()),
                            varbind.value, *this);
    } catch (...) {
      error = ReportException(*object);
    }
    if (error != SetError::None) return {WireError(error), varbind_};
  }
  return {};
}

// The checks of objects, then of modules: all see everything that is staged.
// Changes from `first` on are of this request, which may also have added to the
// others: those blame none of its varbinds.
Transaction::Failure Transaction::Check(std::size_t first) {
  std::vector<std::pair<std::shared_ptr<ModuleState>, std::uint16_t>> modules;
  for (std::size_t i = 0; i < changes_.size(); ++i) {
    if (changes_[i]->IsChecked()) continue;
    const bool isNew = i >= first;
    const Failure failure = CheckChange(i);
    if (failure.error != agentx::Error::None) {
      return {failure.error, isNew ? failure.index : std::uint16_t{0}};
    }
    const auto module = changes_[i]->Object().Module().shared_from_this();
    if (std::none_of(modules.begin(), modules.end(),
                     [&](const auto& seen) { return seen.first == module; })) {
      modules.emplace_back(module, isNew ? varbinds_[i] : std::uint16_t{0});
    }
  }
  for (const auto& [module, varbind] : modules) {
    const SetError error = module->AskCheck(*this);
    if (error != SetError::None) return {WireError(error), varbind};
  }
  return {};
}

Transaction::Failure Transaction::CheckChange(std::size_t which) {
  Change& change = *changes_[which];
  std::uint16_t varbind = varbinds_[which];
  SetError error = SetError::None;
  const TimedCall timed(agent_, change.Object().Name());
  try {
    if (change.Object().IsServed()) error = change.Check(varbind);
  } catch (...) {
    error = ReportException(change.Object());
  }
  change.SetChecked(error == SetError::None);
  return {WireError(error), varbind};
}

void Transaction::Commit(const agentx::Header& request) {
  switch (phase_) {
    case Phase::Tested:
      commits_.push_back(request);
      phase_ = Phase::Committing;
      Proceed();
      break;
    case Phase::Committing:
    case Phase::Undoing:
      commits_.push_back(request);
      break;
    case Phase::Committed:
      agent_.Respond(request, agentx::Error::None, 0);
      break;
    case Phase::Ended:
      agent_.Respond(request, agentx::Error::CommitFailed, 0);
      break;
  }
}

void Transaction::Undo(const agentx::Header& request) {
  undos_.push_back(request);
  switch (phase_) {
    case Phase::Tested:
      EndUndo();
      break;
    case Phase::Committing:
      undoWanted_ = true;
      break;
    case Phase::Committed:
      StartUndo(changes_.size());
      break;
    case Phase::Undoing:
      break;
    case Phase::Ended:
      EndUndo();
      break;
  }
}

void Transaction::Cleanup() {
  if (phase_ == Phase::Committing) {
    undoWanted_ = true;
  } else if (phase_ == Phase::Tested || phase_ == Phase::Ended) {
    EndUndo();
  } else if (phase_ == Phase::Committed) {
    const auto keep = shared_from_this();
    phase_ = Phase::Ended;
    for (const auto& change : changes_) {
      const TimedCall timed(agent_, change->Object().Name());
      try {
        change->Finish();
      } catch (...) {
        ReportException(change->Object());
      }
    }
  }
}

void Transaction::Abandon() {
  commits_.clear();
  undos_.clear();
  failureUntold_ = false;
  if (phase_ == Phase::Tested && !running_) EndUndo();
  if (phase_ == Phase::Committing || running_) undoWanted_ = true;
  if (phase_ == Phase::Committed) StartUndo(changes_.size());
}

void Transaction::GiveUp() {
  Abandon();
  while (waiting_) {
    call_->Abandon();
    Resume(SetError::GenErr);
  }
}

// Commits one change after the other, or undoes them, until an answer is to
// come or all is done.
void Transaction::Proceed() {
  const auto keep = shared_from_this();
  deadline_ = Now() + kForgotten;
  while (!waiting_ &&
         (phase_ == Phase::Committing || phase_ == Phase::Undoing)) {
    if (phase_ == Phase::Committing && undoWanted_) {
      StartUndo(next_);
    } else if (phase_ == Phase::Committing && next_ == changes_.size()) {
      phase_ = Phase::Committed;
      Respond(commits_, agentx::Error::None);
    } else if (phase_ == Phase::Undoing && next_ == 0) {
      EndUndo();
    } else {
      Take(CallCurrent());
    }
  }
}

Change& Transaction::Current() const {
  return *changes_[phase_ == Phase::Committing ? next_ : next_ - 1];
}

OidView Transaction::CurrentName() const { return Current().Object().Name(); }

Step Transaction::CallCurrent() {
  Change& change = Current();
  const Running running(*this);
  const TimedCall timed(agent_, change.Object().Name());
  try {
    return phase_ == Phase::Committing ? change.Commit(*this)
                                       : change.Undo(*this);
  } catch (...) {
    ReportException(change.Object());
    return Step::Refused;
  }
}

void Transaction::Take(Step step) {
  if (step == Step::Deferred) {
    Wait();
    return;
  }
  waiting_ = false;
  call_.reset();
  if (phase_ == Phase::Undoing) {
    undoFailed_ |= step == Step::Refused;
    --next_;
  } else if (step == Step::Done) {
    ++next_;
  } else {
    failure_ = {agentx::Error::CommitFailed, varbinds_[next_]};
    StartUndo(next_);
  }
}

// The first `count` changes are to be undone, the last one first.
void Transaction::StartUndo(std::size_t count) {
  const bool inProgress = phase_ == Phase::Committing;
  phase_ = Phase::Undoing;
  next_ = count;
  if (!inProgress) Proceed();
}

void Transaction::EndUndo() {
  phase_ = Phase::Ended;
  failureUntold_ = undoFailed_ && undos_.empty() && !commits_.empty();
  changes_.clear();
  varbinds_.clear();
  Respond(commits_, agentx::Error::CommitFailed, failure_.index);
  Respond(undos_,
          undoFailed_ ? agentx::Error::UndoFailed : agentx::Error::None);
}

void Transaction::Respond(std::vector<agentx::Header>& waiting,
                          agentx::Error error, std::uint16_t index) {
  for (const agentx::Header& request : std::exchange(waiting, {})) {
    agent_.Respond(request, error, index);
  }
}

void Transaction::Wait() {
  waiting_ = true;
  deadline_ = Now() + Current().Object().Module().AnswerTime();
  call_->Suspend();
}

std::shared_ptr<LaterCall> Transaction::MakeCall() {
  call_ = std::make_shared<SetCall>(*this);
  return call_;
}

bool Transaction::Answered(SetError& error) const {
  return call_->Result(error);
}

void Transaction::Resume(SetError error) {
  const auto keep = shared_from_this();
  Take(ResumeCurrent(error));
  Proceed();
}

Step Transaction::ResumeCurrent(SetError error) {
  Change& change = Current();
  const Running running(*this);
  try {
    return change.Resumed(error);
  } catch (...) {
    ReportException(change.Object());
    return Step::Refused;
  }
}

void Transaction::OnDeadline() {
  if (waiting_) {
    agent_.Log(LogLevel::Warning, ToString(Current().Object().Name()) +
                                      ": a SET was not answered in time");
    call_->Abandon();
    Resume(SetError::GenErr);
  } else {
    Abandon();
  }
}

}  // namespace snmpsubagent::detail
