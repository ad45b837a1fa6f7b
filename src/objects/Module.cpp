// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Module.h"

#include <utility>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"

namespace snmpsubagent {
namespace {

void Close(const std::shared_ptr<detail::ModuleState>& state) {
  if (!state) return;
  const AgentLock lock(state->Agent());
  state->Close();
}

}  // namespace

Module::Module(Agent& agent, std::string_view subtree, ModuleOptions options) {
  const AgentLock lock = agent.Lock();
  state_ = std::make_shared<detail::ModuleState>(agent.State(), subtree,
                                                 std::move(options));
}

Module::~Module() { Close(state_); }

Module::Module(Module&&) noexcept = default;

Module& Module::operator=(Module&& other) noexcept {
  if (this != &other) {
    Close(state_);
    state_ = std::move(other.state_);
  }
  return *this;
}

void Module::AddSubtree(std::string_view subtree) {
  const AgentLock lock(detail::Existing(state_)->Agent());
  state_->AddSubtree(Oid(subtree));
}

void Module::Check(std::function<SetError(const SetChange&)> check) {
  const AgentLock lock(detail::Existing(state_)->Agent());
  state_->SetCheck(std::move(check));
}

bool Module::IsRegistered() const {
  const AgentLock lock(detail::Existing(state_)->Agent());
  return state_->IsRegistered();
}

}  // namespace snmpsubagent
