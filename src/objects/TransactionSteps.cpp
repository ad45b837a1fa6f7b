// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// How a SET commits its changes one after the other, or undoes them.
#include <utility>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"
#include "objects/SetCall.h"
#include "objects/TimedCall.h"
#include "objects/Transaction.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {

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
      const Step step = CallCurrent();
      Take(step == Step::Deferred && givenUp_ ? FailCurrent() : step);
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

// Nobody waits for its answer any more.
Step Transaction::FailCurrent() {
  call_->Abandon();
  return ResumeCurrent(SetError::GenErr);
}

void Transaction::Take(Step step) {
  if (step == Step::Deferred) {
    Wait();
    return;
  }
  waiting_ = false;
  if (call_) call_->Abandon();  // its function may have thrown and kept it
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
    call_->Abandon();
    agent_.Log(LogLevel::Warning,
               ToString(CurrentName()) + ": a SET was not answered in time");
    if (waiting_) Resume(SetError::GenErr);  // unless the log has stopped it
  } else {
    Abandon();
  }
}

}  // namespace snmpsubagent::detail
