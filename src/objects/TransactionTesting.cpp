// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a SET does with a TestSet: it stages the varbinds and asks the checks.
#include <algorithm>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"
#include "objects/ObjectIndex.h"
#include "objects/TimedCall.h"
#include "objects/Transaction.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {
namespace {

agentx::Error WireError(SetError error) {
  return static_cast<agentx::Error>(error);
}

}  // namespace

void Transaction::Test(const agentx::Request& request,
                       const ObjectIndex* index) {
  if (phase_ != Phase::Tested) {
    agent_.Respond(request.header, agentx::Error::GenErr, 0);
    return;
  }
  deadline_ = Now() + kForgotten;
  const auto keep = shared_from_this();
  const std::size_t first = changes_.size();
  Failure failure;
  {
    const Running running(*this);
    failure = Stage(request, index);
    if (failure.error == agentx::Error::None) failure = Check(first);
  }
  if (failure.error != agentx::Error::None) EndUndo();
  // The varbinds that a CommitSet names are those of the first request.
  if (isTested_ && first < varbinds_.size()) {
    std::fill(varbinds_.begin() + static_cast<std::ptrdiff_t>(first),
              varbinds_.end(), std::uint16_t{0});
  }
  isTested_ = true;
  agent_.Respond(request.header, failure.error, failure.index);
}

// Here and below: when the session goes while a function of the application is
// running no other one is called. Nobody hears of the error.
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
    if (undoWanted_) return {agentx::Error::GenErr, 0};
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
    if (undoWanted_) return {agentx::Error::GenErr, 0};
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
    if (undoWanted_) return {agentx::Error::GenErr, 0};
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

}  // namespace snmpsubagent::detail
