// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Agent.h"

#include <mutex>
#include <utility>

#include "objects/AgentState.h"
#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent {

AgentLock::AgentLock(std::shared_ptr<detail::AgentState> state)
    : state_(std::move(state)) {
  state_->Mutex().lock();
}

AgentLock::~AgentLock() { state_->Mutex().unlock(); }

Agent::Agent(std::string description, AgentOptions options)
    : state_(std::make_shared<detail::AgentState>(std::move(description),
                                                  std::move(options))) {}

Agent::~Agent() {
  state_->End();
  state_->ReportIfItNeverRan();
}

void Agent::Start() { state_->Start(); }
void Agent::Run() { state_->Run(); }
int Agent::Poll() { return state_->Poll(); }
void Agent::Dispatch() { state_->Dispatch(); }
void Agent::Stop() { state_->Stop(); }

bool Agent::Connected() const {
  const AgentLock lock = Lock();
  return state_->IsConnected();
}

bool Agent::WaitUntilConnected(std::chrono::milliseconds time) const {
  return state_->WaitUntilConnected(time);
}

void Agent::OnSession(std::function<void(const SessionEvent&)> function) {
  const AgentLock lock = Lock();
  state_->SetOnSession(std::move(function));
}

void Agent::OnRefusal(std::function<void(const Refusal&)> function) {
  const AgentLock lock = Lock();
  state_->SetOnRefusal(std::move(function));
}

std::vector<Refusal> Agent::Refusals() const {
  const AgentLock lock = Lock();
  return state_->Refusals();
}

void Agent::AddCapability(const Oid& id, const std::string& description) {
  const AgentLock lock = Lock();
  state_->AddCapability(id, description);
}

std::uint32_t Agent::SysUpTime() const {
  const AgentLock lock = Lock();
  return state_->SysUpTimeAt(detail::Now());
}

std::uint64_t Agent::DroppedNotifications() const {
  const AgentLock lock = Lock();
  return state_->DroppedNotifications();
}

}  // namespace snmpsubagent
