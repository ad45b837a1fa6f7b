// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Transaction.h"

#include <algorithm>
#include <utility>

#include "objects/AgentState.h"
#include "objects/SetCall.h"
#include "objects/TimedCall.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {

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
  givenUp_ = true;
  Abandon();
  while (waiting_) {
    call_->Abandon();
    Resume(SetError::GenErr);
  }
}

}  // namespace snmpsubagent::detail
