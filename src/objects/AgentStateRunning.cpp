// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Who runs an agent, and from when until when.
#include <algorithm>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <thread>
#include <utility>

#include "objects/AgentState.h"
#include "objects/Stopwatch.h"
#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent::detail {

void AgentState::Open(Mode mode) {
  if (mode_ != Mode::Stopped) throw std::logic_error("the agent is running");
  if (ended_) throw std::logic_error("the agent is being destroyed");
  connection_ =
      std::make_shared<Connection>(session_, master_, options_.responseTimeout,
                                   [this](auto lookUp, auto tell) {
                                     LookUp(std::move(lookUp), std::move(tell));
                                   });
  mode_ = mode;
  hasRun_ |= mode != Mode::Polled;
  session_.Start(Now());
  connection_->Wake();
}

void AgentState::Start() {
  const std::lock_guard lock(mutex_);
  if (mode_ != Mode::Stopped || ended_) return;
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

// Here and below: a function of the application may destroy the agent.
void AgentState::Run() {
  const auto keep = shared_from_this();
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
  const auto keep = shared_from_this();
  const std::lock_guard lock(mutex_);
  if (serving_) return;  // called by an application function
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

// False when this connection is no longer the agent's. The caller keeps it.
bool AgentState::Serve(Connection& connection,
                       const Connection::Events& events) {
  const auto isOurs = [&] { return &connection == connection_.get(); };
  if (!isOurs()) return false;
  Alone([&] {
    if (connection.Serve(events)) requests_.Advance(Now());
    if (isOurs()) connection.Update(requests_.NextDeadline());
  });
  return isOurs();
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
  const auto keep = shared_from_this();
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

void AgentState::End() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  Stop();
}

bool AgentState::WaitUntilConnected(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  if (mutex_.Depth() > 1) return IsConnected();
  return opened_.wait_for(lock, std::min(time, kLongestTime),
                          [this] { return IsConnected(); });
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

// A thread of its own for what may wait for a name server. Without memory for
// what it finds, it finds nothing.
void AgentState::LookUp(std::function<void()> lookUp,
                        std::function<void()> tell) {
  std::thread([weak = weak_from_this(), lookUp = std::move(lookUp),
               tell = std::move(tell)] {
    try {
      lookUp();
    } catch (const std::bad_alloc&) {
    }
    const auto self = weak.lock();
    if (!self) return;
    const std::lock_guard lock(self->mutex_);
    const auto keep = self->connection_;  // who is told may stop the agent
    self->Alone(tell);
  }).detach();
}

}  // namespace snmpsubagent::detail
