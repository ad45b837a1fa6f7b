// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What an agent tells the application, by a function or a line of the log.
#include <mutex>
#include <new>
#include <utility>

#include "objects/AgentState.h"

namespace snmpsubagent::detail {
namespace {

Refusal RefusalOf(const agentx::RefusedRegistration& refused) {
  return {refused.subtree, refused.context, agentx::ToString(refused.error)};
}

}  // namespace

// What is told, or the reason for it, is all that is lost when there is no
// memory for it.
template <typename Telling>
void AgentState::IfThereIsMemory(const Telling& tell) noexcept {
  try {
    tell();
  } catch (const std::bad_alloc&) {
  }
}

void AgentState::SetOnSession(
    std::function<void(const SessionEvent&)> function) {
  onSession_ = std::make_shared<std::function<void(const SessionEvent&)>>(
      std::move(function));
}

void AgentState::SetOnRefusal(std::function<void(const Refusal&)> function) {
  onRefusal_ = std::make_shared<std::function<void(const Refusal&)>>(
      std::move(function));
}

std::vector<Refusal> AgentState::Refusals() const {
  std::vector<Refusal> refusals;
  for (const auto& refused : session_.RefusedRegistrations()) {
    refusals.push_back(RefusalOf(refused));
  }
  return refusals;
}

void AgentState::OnOpened() {
  IfThereIsMemory(
      [&] { Log(LogLevel::Info, "connected to " + options_.master); });
  if (!IsConnected()) return;  // the log has stopped it
  opened_.notify_all();
  TellSession(true, {});
}

void AgentState::OnEnded(std::string_view reason) {
  ++epoch_;
  IfThereIsMemory([&] {
    Log(LogLevel::Warning, "the session with " + options_.master +
                               " has ended: " + std::string(reason));
  });
  requests_.Abandon();
  TellSession(false, reason);
}

void AgentState::OnAttemptFailed(std::string_view reason) {
  IfThereIsMemory([&] {
    const bool namesMaster =
        reason.find(options_.master) != std::string_view::npos;
    Log(LogLevel::Warning, namesMaster
                               ? std::string(reason)
                               : "no session with " + options_.master + ": " +
                                     std::string(reason) +
                                     "; is that the agentXSocket of snmpd?");
  });
}

void AgentState::OnRegistration(std::uint32_t id, agentx::Error) {
  IfThereIsMemory([&] { TellRefusal(id); });
}

void AgentState::OnAgentCaps(const Oid& id, agentx::Error error) {
  if (error == agentx::Error::None) return;
  IfThereIsMemory([&] {
    Log(LogLevel::Error, ToString(id) +
                             ": the master agent refuses this capability: " +
                             agentx::ToString(error) + "; it is tried again");
  });
}

void AgentState::TellRefusal(std::uint32_t id) {
  const auto refused = session_.FindRefused(id);
  if (!refused) return;
  const Refusal refusal = RefusalOf(*refused);
  Log(LogLevel::Error,
      ToString(refusal.subtree) +
          ": the master agent refuses to register this subtree: " +
          refusal.reason +
          (refused->error == agentx::Error::DuplicateRegistration
               ? "; another subagent or module has it, and it is tried again "
                 "until that leaves"
               : "; it is tried again"));
  const auto function = onRefusal_;
  if (!function || !*function) return;
  try {
    (*function)(refusal);
  } catch (...) {
    ReportException(refusal.subtree);
  }
}

void AgentState::OnNotification(std::uint64_t id,
                                agentx::NotificationOutcome outcome,
                                agentx::Error error) {
  IfThereIsMemory([&] {
    if (outcome == agentx::NotificationOutcome::Refused) {
      Log(LogLevel::Error, "the master agent has refused a notification: " +
                               agentx::ToString(error));
    } else if (outcome == agentx::NotificationOutcome::Dropped) {
      Log(LogLevel::Warning, "a notification was dropped");
    }
  });
  const auto found = outcomes_.extract(id);
  if (!found) return;
  std::string reason;
  IfThereIsMemory([&] {
    if (error != agentx::Error::None) reason = agentx::ToString(error);
  });
  try {
    found.mapped()(
        {static_cast<NotificationResult::Outcome>(outcome), std::move(reason)});
  } catch (...) {
    ReportException({});
  }
}

void AgentState::TellSession(bool connected, std::string_view reason) {
  const auto function = onSession_;
  if (!function || !*function) return;
  std::string text;
  IfThereIsMemory([&] { text = reason; });
  try {
    (*function)({connected, std::move(text)});
  } catch (...) {
    ReportException({});
  }
}

SetError AgentState::ReportException(OidView where) noexcept {
  std::string what = "an exception";
  try {
    try {
      throw;
    } catch (const std::exception& exception) {
      what = exception.what();
    } catch (...) {
    }
    Log(LogLevel::Error,
        ToString(where) +
            ": a function of the application has thrown: " + what);
  } catch (...) {
  }
  return SetError::GenErr;
}

void AgentState::ReportLostAnswer(OidView where) noexcept {
  IfThereIsMemory([&] {
    Log(LogLevel::Error,
        ToString(where) +
            ": the last copy of a Later is gone and has not been answered");
  });
}

void AgentState::ReportSlowFunction(OidView where) noexcept {
  IfThereIsMemory([&] {
    Log(LogLevel::Warning,
        ToString(where) +
            ": a function of the application took more than a second, in which "
            "nothing else was served; answer with a Later");
  });
}

void AgentState::ReportHeldLock() noexcept {
  IfThereIsMemory([&] {
    Log(LogLevel::Warning,
        "the application held the agent's lock for more than a second, in "
        "which nothing was served");
  });
}

void AgentState::ReportIfItNeverRan() noexcept {
  const std::lock_guard lock(mutex_);
  if (hasRun_ || !hasModules_) return;
  IfThereIsMemory([&] {
    Log(LogLevel::Warning,
        "nothing was served: the agent has never run; call Start() or Run(), "
        "or Dispatch() when Poll() says so");
  });
}

}  // namespace snmpsubagent::detail
