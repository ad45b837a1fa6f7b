// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Session.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "agentx/OwnMessages.h"
#include "agentx/ResponseWriter.h"

namespace snmpsubagent::agentx {
namespace {

std::string Seconds(std::chrono::milliseconds time) {
  std::string text = std::to_string(time.count() / 1000);
  const std::string thousandths = std::to_string(time.count() % 1000);
  if (thousandths != "0") {
    text += '.' + std::string(3 - thousandths.size(), '0') + thousandths;
  }
  return text + " s";
}

std::optional<Time> Earlier(std::optional<Time> a, std::optional<Time> b) {
  if (!a || !b) return a ? a : b;
  return std::min(*a, *b);
}

}  // namespace

Session::Session(SessionOptions options, SessionUser& user)
    : options_(std::move(options)),
      user_(user),
      retry_(options_.firstRetry, options_.lastRetry),
      standing_(options_.firstRegistrationRetry,
                options_.lastRegistrationRetry) {}

void Session::Start(Time) {
  if (state_ != State::Stopped) return;
  state_ = State::Connecting;
  retry_.Reset();
}

void Session::Stop(Time) {
  const bool wasOpen = state_ == State::Open;
  if (wasOpen) WriteClose(CloseReason::Shutdown);
  if (state_ == State::Opening) output_.Clear();
  Leave(State::Stopped);
  ToTell(notifications_.TakeWritten(), NotificationOutcome::Unanswered);
  ToTell(notifications_.TakeWaitingBeyond(0), NotificationOutcome::Dropped);
  if (wasOpen) user_.OnEnded("it was stopped");
  TellOutcomes();
}

bool Session::WantsConnection() const { return state_ == State::Connecting; }

bool Session::IsOpen() const { return state_ == State::Open; }

void Session::Connected(Time now) {
  if (state_ != State::Connecting) return;
  state_ = State::Opening;
  ++generation_;
  sessionId_ = 0;
  lastHeard_ = now;
  input_.Reset();
  output_.Clear();
  Guarded(now, [&] {
    Ask(PduType::Open, 0, true, now, [&](const Header& header) {
      WriteOpen(output_.Bytes(), header, options_.timeout, options_.id,
                options_.description);
    });
  });
}

void Session::ConnectFailed(Time now, std::string_view reason) {
  if (state_ == State::Connecting) End(now, reason);
}

void Session::Disconnected(Time now, std::string_view reason) {
  if (HasConnection()) End(now, reason);
}

void Session::Send(const Header& request,
                   const std::vector<std::uint8_t>& response, Time now) {
  if (state_ != State::Open || request.generation != generation_) return;
  Guarded(now, [&] { Encoder(output_.Bytes()).Encoded(response); });
}

std::optional<Time> Session::NextDeadline() const {
  switch (state_) {
    case State::Stopped:
    case State::Connecting:
      return {};
    case State::Waiting:
      return nextAttempt_;
    case State::Opening:
      return outstanding_.Deadline();
    case State::Open:
      return Earlier(Earlier(outstanding_.Deadline(), PingTime()),
                     standing_.NextRetry());
  }
  return {};
}

bool Session::Advance(Time now) {
  if (state_ == State::Waiting && now >= nextAttempt_) {
    state_ = State::Connecting;
  }
  if (!HasConnection()) return true;
  Guarded(now, [&] {
    const std::optional<Time> deadline = outstanding_.Deadline();
    if (deadline && *deadline <= now) return EndUnanswered(now);
    if (state_ != State::Open) return;
    standing_.RetryDue(now);
    SendWhatFits(now);
    SendPingIfDue(now);
  });
  return HasConnection();
}

std::uint32_t Session::Register(Registration registration, Time now) {
  const std::uint32_t id = standing_.Add(std::move(registration));
  SendWhatFits(now);
  return id;
}

void Session::Unregister(std::uint32_t id, Time now) {
  Guarded(now, [&] { standing_.Withdraw(id); });
  SendWhatFits(now);
}

bool Session::IsRegistered(std::uint32_t id) const {
  return standing_.IsTaken(id);
}

std::vector<RefusedRegistration> Session::RefusedRegistrations() const {
  return standing_.Refused();
}

std::optional<RefusedRegistration> Session::FindRefused(
    std::uint32_t id) const {
  return standing_.FindRefused(id);
}

void Session::AddAgentCaps(const Oid& id, const std::string& description,
                           const std::string& context, Time now) {
  standing_.Add(AgentCaps{id, description, context});
  SendWhatFits(now);
}

void Session::RemoveAgentCaps(const Oid& id, const std::string& context,
                              Time now) {
  Guarded(now, [&] { standing_.WithdrawAgentCaps(id, context); });
  SendWhatFits(now);
}

std::uint64_t Session::Notify(std::vector<std::uint8_t> payload,
                              const std::string& context, Time now) {
  const std::uint64_t id = notifications_.Add(std::move(payload), context);
  SendWhatFits(now);
  // An application that sends again whatever is dropped would never return.
  if (state_ != State::Open && !telling_) {
    ToTell(notifications_.TakeWaitingBeyond(options_.notificationLimit),
           NotificationOutcome::Dropped);
    TellOutcomes();
  }
  return id;
}

std::uint32_t Session::SysUpTime(Time now) const { return upTime_.At(now); }

// Whatever is told to the user comes last: it may call anything.
void Session::End(Time now, std::string_view reason) {
  notifications_.ReturnUnsent(output_.SentSoFar());
  output_.Clear();
  EndKeepingOutput(now, reason);
}

void Session::EndKeepingOutput(Time now, std::string_view reason) {
  const bool wasOpen = state_ == State::Open;
  nextAttempt_ = now + retry_.Next();
  Leave(State::Waiting);
  ToTell(notifications_.TakeWritten(), NotificationOutcome::Unanswered);
  ToTell(notifications_.TakeWaitingBeyond(options_.notificationLimit),
         NotificationOutcome::Dropped);
  if (wasOpen) {
    user_.OnEnded(reason);
  } else {
    user_.OnAttemptFailed(reason);
  }
  TellOutcomes();
}

void Session::EndUnanswered(Time now) {
  End(now, "the master agent has not answered for " +
               Seconds(options_.responseTimeout));
}

void Session::Leave(State state) {
  state_ = state;
  outstanding_.Clear();
  standing_.SessionEnded();
}

// There may be no memory for it. The connection is closed all the same.
void Session::WriteClose(CloseReason reason) {
  try {
    agentx::WriteClose(output_.Bytes(), NextHeader(), reason);
  } catch (const std::bad_alloc&) {
  }
}

void Session::ToTell(NotificationList notifications,
                     NotificationOutcome outcome, Error error) {
  for (QueuedNotification& notification : notifications) {
    notification.outcome = outcome;
    notification.error = error;
    if (outcome == NotificationOutcome::Dropped) ++dropped_;
  }
  untold_.splice(untold_.end(), notifications);
}

// Also those of whoever called what is being told of: when Stop() has returned
// nothing is told any more.
void Session::TellOutcomes() {
  const bool wasTelling = std::exchange(telling_, true);
  while (!untold_.empty()) {
    NotificationList first;
    first.splice(first.end(), untold_, untold_.begin());
    const QueuedNotification& told = first.front();
    user_.OnNotification(told.id, told.outcome, told.error);
  }
  telling_ = wasTelling;
}

}  // namespace snmpsubagent::agentx
