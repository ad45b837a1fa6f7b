// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/ModuleState.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ObjectIndex.h"
#include "objects/TimedCall.h"
#include "snmpsubagent/SetChange.h"

namespace snmpsubagent::detail {
namespace {

// So much earlier than the master agent's timeout is an answer that never comes
// given up.
constexpr std::chrono::milliseconds kMargin{500};

ModuleOptions WithDefaults(ModuleOptions options, const AgentState& agent) {
  if (options.priority == 0) {
    throw std::invalid_argument("a priority is a number from 1 to 255");
  }
  if (options.timeout.count() < 0 || options.timeout.count() > 255) {
    throw std::invalid_argument("a timeout is 0 to 255 seconds");
  }
  if (options.context.empty()) options.context = agent.Options().context;
  return options;
}

// Whether it looks as if only the dot in front were missing, which says that it
// is a whole OID: nobody has these below a subtree of their own.
bool LacksItsDot(OidView oid, OidView subtree) {
  static constexpr SubIdentifier kBegins[][6] = {
      {1, 3, 6, 1, 2, 1}, {1, 3, 6, 1, 4, 1}, {1, 3, 6, 1, 6, 3}};
  return oid.StartsWith(subtree) ||
         std::any_of(std::begin(kBegins), std::end(kBegins),
                     [&](const auto& begin) {
                       return oid.StartsWith(OidView(begin, 6));
                     });
}

Oid NonEmpty(Oid oid) {
  if (oid.empty()) throw std::invalid_argument("a subtree needs an OID");
  return oid;
}

}  // namespace

ModuleState::ModuleState(std::shared_ptr<AgentState> agent,
                         std::string_view subtree, ModuleOptions options)
    : agent_(std::move(agent)),
      options_(WithDefaults(std::move(options), *agent_)) {
  AddSubtree(Oid(subtree));
}

void ModuleState::AddSubtree(Oid subtree) {
  subtrees_.reserve(subtrees_.size() + 1);
  registrations_.reserve(subtrees_.size() + 1);
  agentx::Registration registration{NonEmpty(std::move(subtree)),
                                    options_.context, options_.priority,
                                    options_.timeout};
  Oid kept = registration.subtree;
  registrations_.push_back(agent_->Register(std::move(registration)));
  subtrees_.push_back(std::move(kept));
}

void ModuleState::Close() {
  open_ = false;
  agent_->Requests().IndexOf(options_.context).RemoveAllOf(*this);
  for (const std::uint32_t id : std::exchange(registrations_, {})) {
    agent_->Unregister(id);
  }
  check_.reset();
}

bool ModuleState::IsRegistered() const {
  return std::all_of(
      registrations_.begin(), registrations_.end(),
      [&](std::uint32_t id) { return agent_->IsRegistered(id); });
}

std::chrono::milliseconds ModuleState::AnswerTime() const {
  const std::chrono::seconds timeout = options_.timeout.count() == 0
                                           ? agent_->Options().timeout
                                           : options_.timeout;
  return timeout - kMargin;
}

Oid ModuleState::Resolve(std::string_view text) const {
  const std::lock_guard lock(agent_->Mutex());
  const bool isWhole = !text.empty() && text.front() == '.';
  const Oid given(text);
  if (!isWhole && LacksItsDot(given, subtrees_.front())) {
    throw std::invalid_argument("'" + std::string(text) +
                                "' is a whole OID: put a dot in front, or "
                                "leave out what the module " +
                                ToString(subtrees_.front()) + " has");
  }
  const Oid oid = isWhole ? given : subtrees_.front() + given;
  const bool isOurs = std::any_of(
      subtrees_.begin(), subtrees_.end(),
      [&](const Oid& subtree) { return oid.View().StartsWith(subtree); });
  if (text.empty() || !isOurs) {
    throw std::invalid_argument("'" + std::string(text) +
                                "' is no OID within the module " +
                                ToString(subtrees_.front()));
  }
  return oid;
}

void ModuleState::Add(ManagedObject& object) {
  if (!open_) throw std::logic_error("the module is gone");
  agent_->Requests().IndexOf(options_.context).Add(object);
}

void ModuleState::Remove(ManagedObject& object) {
  agent_->Requests().IndexOf(options_.context).Remove(object);
}

void ModuleState::SetCheck(CheckFunction check) {
  check_ = check ? std::make_shared<CheckFunction>(std::move(check)) : nullptr;
}

SetError ModuleState::AskCheck(const Transaction& transaction) {
  const auto check = check_;
  if (!check) return SetError::None;
  const TimedCall timed(*agent_, subtrees_.front());
  try {
    return (*check)(SetChange(transaction));
  } catch (...) {
    return agent_->ReportException(subtrees_.front());
  }
}

std::shared_ptr<ModuleState> Existing(std::shared_ptr<ModuleState> module) {
  if (!module) throw std::logic_error("the module has been moved elsewhere");
  return module;
}

}  // namespace snmpsubagent::detail
