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
    NamedModules modules;
    failure = Stage(request, index, modules);
    if (failure.error == agentx::Error::None) failure = Check(first, modules);
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
                                        const ObjectIndex* index,
                                        NamedModules& modules) {
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
    NoteModule(object->Module(), varbind_, modules);
  }
  return {};
}

void Transaction::NoteModule(ModuleState& module, std::uint16_t varbind,
                             NamedModules& modules) {
  if (std::none_of(modules.begin(), modules.end(), [&](const auto& named) {
        return named.first.get() == &module;
      })) {
    modules.emplace_back(module.shared_from_this(), varbind);
  }
}

// The checks of objects, then of modules: all see everything that is staged.
// Changes from `first` on are of this request, which may also have added to the
// others: those blame none of its varbinds. A row may have cells in several
// modules, of which all that the request names are asked.
Transaction::Failure Transaction::Check(std::size_t first,
                                        NamedModules& modules) {
  for (std::size_t i = 0; i < changes_.size(); ++i) {
    if (changes_[i]->IsChecked()) continue;
    const bool isNew = i >= first;
    const Failure failure = CheckChange(i);
    if (undoWanted_) return {agentx::Error::GenErr, 0};
    if (failure.error != agentx::Error::None) {
      return {failure.error, isNew ? failure.index : std::uint16_t{0}};
    }
    NoteModule(changes_[i]->Object().Module(), 0, modules);
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
