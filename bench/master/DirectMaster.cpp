// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "master/DirectMaster.h"

#include <map>

namespace agentx = testkit::agentx;

namespace {

// Under callgrind a subagent is slow, and so is an iterator with many rows.
constexpr std::chrono::seconds kTimeout{300};

}  // namespace

void DirectMaster::Connect(const Expected& expected) {
  session_ = std::make_unique<agentx::MasterSession>(listener_.Accept(kTimeout),
                                                     kTimeout);
  session_->ServeUntil(
      [&] { return session_->Registered().size() >= expected.subtrees; });
  session_->SetCleanupIsAnswered(expected.answersCleanup);
}

agentx::Response DirectMaster::Put(const agentx::Body& request) {
  const auto* const set = std::get_if<agentx::TestSet>(&request);
  agentx::Response response =
      set == nullptr ? session_->Ask(request) : session_->Set(set->varbinds);
  session_->TakeNotifications();
  return response;
}

std::vector<DirectMaster::Timed> DirectMaster::PutAll(
    const std::vector<agentx::Body>& requests, std::size_t outstanding) {
  using Clock = std::chrono::steady_clock;
  struct Open {
    std::size_t request;
    Clock::time_point start;
  };
  std::map<std::uint32_t, Open> open;  // by packet id
  std::vector<Timed> answers(requests.size());
  std::size_t sent = 0;
  while (sent < requests.size() || !open.empty()) {
    if (sent < requests.size() && open.size() < outstanding) {
      const Clock::time_point start = Clock::now();
      open[session_->Send(requests[sent])] = {sent, start};
      ++sent;
      continue;
    }
    const agentx::Pdu answer = session_->Receive();
    const Open& asked = open.at(answer.header.packetId);
    answers[asked.request] = {std::get<agentx::Response>(answer.body),
                              Clock::now() - asked.start};
    open.erase(answer.header.packetId);
  }
  return answers;
}
