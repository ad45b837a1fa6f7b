// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/AgentState.h"

#include <mutex>
#include <new>
#include <stdexcept>
#include <utility>

#include "objects/Stopwatch.h"
#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent::detail {
namespace {

using std::chrono::milliseconds;

AgentOptions Checked(AgentOptions options) {
  if (options.timeout.count() < 1 || options.timeout.count() > 255) {
    throw std::invalid_argument("AgentOptions::timeout is 1 to 255 seconds");
  }
  if (options.responseTimeout.count() <= 0 || options.firstRetry.count() <= 0 ||
      options.lastRetry < options.firstRetry ||
      options.pingInterval.count() < 0) {
    throw std::invalid_argument("a time in AgentOptions is out of range");
  }
  return options;
}

agentx::SessionOptions SessionOptionsOf(std::string description,
                                        const AgentOptions& options) {
  if (description.empty()) {
    throw std::invalid_argument(
        "an agent needs a description, with which its log lines begin");
  }
  if (description.size() > 255) {
    throw std::invalid_argument("a description has at most 255 octets");
  }
  agentx::SessionOptions session;
  session.description = std::move(description);
  session.timeout = options.timeout;
  session.responseTimeout = options.responseTimeout;
  session.pingInterval = options.pingInterval;
  session.firstRetry = options.firstRetry;
  session.lastRetry = options.lastRetry;
  session.notificationLimit = options.notificationLimit;
  return session;
}

Refusal RefusalOf(const agentx::RefusedRegistration& refused) {
  return {refused.subtree, refused.context, agentx::ToString(refused.error)};
}

}  // namespace

AgentState::AgentState(std::string description, AgentOptions options)
    : options_(Checked(std::move(options))),
      master_(options_.master),
      log_(description, options_.log),
      session_(SessionOptionsOf(std::move(description), options_), *this),
      requests_(*this) {}

// Whoever owned it last has stopped it, or never started. What was to be sent
// since then is told that it is dropped.
AgentState::~AgentState() { session_.Stop(Now()); }

void AgentState::Open(Mode mode) {
  if (mode_ != Mode::Stopped) throw std::logic_error("the agent is running");
  connection_ = std::make_shared<Connection>(
      session_, master_, options_.responseTimeout,
      [this](auto lookUpAndTell) { LookUp(std::move(lookUpAndTell)); });
  mode_ = mode;
  hasRun_ |= mode != Mode::Polled;
  session_.Start(Now());
  connection_->Wake();
}

void AgentState::Start() {
  const std::lock_guard lock(mutex_);
  if (mode_ != Mode::Stopped) return;
  Open(Mode::Thread);
  try {
    thread_ =
        std::thread([self = shared_from_this(), connection = connection_] {
          self->Loop(connection);
        });
  } catch (...) {
    Stop();
    throw;
  }
}

void AgentState::Run() {
  std::shared_ptr<Connection> connection;
  {
    const std::lock_guard lock(mutex_);
    Open(Mode::Caller);
    connection = connection_;
  }
  Loop(connection);
}

int AgentState::Poll() {
  const std::lock_guard lock(mutex_);
  Open(Mode::Polled);
  return connection_->Descriptor();
}

void AgentState::Dispatch() {
  const std::lock_guard lock(mutex_);
  if (const auto connection = connection_) {
    hasRun_ = true;
    Serve(*connection, connection->Wait(true));
  }
}

void AgentState::Loop(const std::shared_ptr<Connection>& connection) {
  while (true) {
    const Connection::Events events = connection->Wait(false);
    const auto lock = LockToServe();
    if (!Serve(*connection, events)) return;
  }
}

// False when this connection is no longer the agent's.
bool AgentState::Serve(Connection& connection,
                       const Connection::Events& events) {
  if (&connection != connection_.get()) return false;
  if (serving_) return true;  // an application function has dispatched
  const auto keep = connection_;
  Alone([&] {
    connection.Serve(events);
    requests_.Advance(Now());
  });
  Update();
  return &connection == connection_.get();
}

void AgentState::Update() {
  const auto keep = connection_;
  if (serving_ || !keep) return;
  Alone([&] { keep->Update(requests_.NextDeadline()); });
}

// Runs what calls application functions, which may end up here again.
// Memory that is short ends the session.
template <typename Work>
void AgentState::Alone(const Work& work) {
  serving_ = true;
  try {
    work();
  } catch (const std::exception& exception) {
    if (const auto connection = connection_) {
      connection->Abort(exception.what());
    }
  }
  serving_ = false;
}

void AgentState::Stop() {
  std::thread thread;
  bool mayWait = false;
  {
    const std::lock_guard lock(mutex_);
    mayWait = mutex_.Depth() == 1;
    mode_ = Mode::Stopped;
    thread = std::move(thread_);
    // Who is told of it may start the agent again.
    const auto connection = std::move(connection_);
    session_.Stop(Now());
    requests_.GiveUp();
    if (connection) connection->Close();
    opened_.notify_all();
  }
  if (!thread.joinable()) return;
  if (mayWait && thread.get_id() != std::this_thread::get_id()) {
    thread.join();
  } else {
    thread.detach();  // it ends as soon as it gets the lock
  }
}

bool AgentState::WaitUntilConnected(milliseconds time) {
  std::unique_lock lock(mutex_);
  if (mutex_.Depth() > 1) return IsConnected();
  return opened_.wait_for(lock, time, [this] { return IsConnected(); });
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

void AgentState::AddCapability(const Oid& id, const std::string& description) {
  session_.AddAgentCaps(id, description, options_.context, Now());
  Update();
}

std::uint32_t AgentState::Register(agentx::Registration registration) {
  const std::uint32_t id = session_.Register(std::move(registration), Now());
  hasModules_ = true;
  Update();
  return id;
}

void AgentState::Unregister(std::uint32_t id) {
  session_.Unregister(id, Now());
  Update();
}

void AgentState::Respond(const agentx::Header& request, agentx::Error error,
                         std::uint16_t index) {
  scratch_.clear();
  agentx::ResponseWriter writer(scratch_, request);
  if (error != agentx::Error::None) writer.Refuse(error, index);
  writer.Finish();
  session_.Send(request, scratch_, Now());
}

void AgentState::Respond(const agentx::Header& request,
                         const std::vector<std::uint8_t>& response) {
  session_.Send(request, response, Now());
}

void AgentState::Notify(std::vector<std::uint8_t> varbinds,
                        const std::string& context,
                        NotificationFunction outcome) {
  const std::uint64_t id = session_.NextNotification();
  if (outcome) outcomes_[id] = std::move(outcome);  // may be told at once
  try {
    session_.Notify(std::move(varbinds), context, Now());
  } catch (...) {
    outcomes_.erase(id);
    throw;
  }
  Update();
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

std::unique_lock<AgentMutex> AgentState::LockToServe() {
  std::unique_lock lock(mutex_, std::try_to_lock);
  if (!lock) {
    const Stopwatch watch;
    lock.lock();
    if (watch.HasLongPassed()) ReportHeldLock();
  }
  return lock;
}

void AgentState::ReportHeldLock() noexcept {
  IfThereIsMemory([&] {
    Log(LogLevel::Warning,
        "the application held the agent's lock for more than a second, in "
        "which nothing was served");
  });
}

// Telling is all that is lost when there is no memory for it.
template <typename Telling>
void AgentState::IfThereIsMemory(const Telling& tell) noexcept {
  try {
    tell();
  } catch (const std::bad_alloc&) {
  }
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

void AgentState::OnOpened() {
  IfThereIsMemory(
      [&] { Log(LogLevel::Info, "connected to " + options_.master); });
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

void AgentState::OnRequest(const agentx::Request& request,
                           std::vector<std::uint8_t>& response) {
  requests_.Serve(request, response);
}

void AgentState::OnRegistration(std::uint32_t id, agentx::Error) {
  IfThereIsMemory([&] { TellRefusal(id); });
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
  try {
    found.mapped()({static_cast<NotificationResult::Outcome>(outcome),
                    error == agentx::Error::None ? std::string()
                                                 : agentx::ToString(error)});
  } catch (...) {
    ReportException({});
  }
}

void AgentState::TellSession(bool connected, std::string_view reason) {
  const auto function = onSession_;
  if (!function || !*function) return;
  try {
    (*function)({connected, std::string(reason)});
  } catch (...) {
    ReportException({});
  }
}

// A thread of its own for what may wait for a name server.
void AgentState::LookUp(std::function<std::function<void()>()> lookUpAndTell) {
  std::thread([weak = weak_from_this(), lookUp = std::move(lookUpAndTell)] {
    const std::function<void()> tell = lookUp();
    const auto self = weak.lock();
    if (!self) return;
    const std::lock_guard lock(self->mutex_);
    tell();
  }).detach();
}

}  // namespace snmpsubagent::detail
