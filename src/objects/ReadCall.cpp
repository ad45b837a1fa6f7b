// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/ReadCall.h"

#include <mutex>

#include "objects/AgentState.h"

namespace snmpsubagent::detail {

ReadCall::ReadCall(ReadRequest& request)
    : agent_(request.Agent().weak_from_this()),
      request_(request.weak_from_this()) {}

void ReadCall::Value(const std::function<void(ValueWriter&)>& write) {
  Give(Answer::Written, write);
}

void ReadCall::Absent() { Give(Answer::Absent, {}); }

bool ReadCall::Set(SetError) { return Give(Answer::Failed, {}); }

void ReadCall::Lose() {
  const auto agent = agent_.lock();
  if (!agent) return;
  const std::lock_guard lock(agent->Mutex());
  const auto request = request_.lock();
  if (request && MissesAnswer(suspended_)) {
    agent->ReportLostAnswer(request->Context().Name());
  }
  Set(SetError::GenErr);
}

bool ReadCall::Give(Answer answer,
                    const std::function<void(ValueWriter&)>& write) {
  const auto agent = agent_.lock();
  if (!agent) return false;
  const std::lock_guard lock(agent->Mutex());
  const auto request = request_.lock();
  if (!request) return false;
  request_.reset();
  result_ = answer;
  if (suspended_) {
    agent->Requests().Resume(request, answer, write);
  } else if (answer == Answer::Written) {
    write(request->Context().Writer());
  } else if (answer == Answer::Absent) {
    request->Context().Cancel();
  }
  return true;
}

}  // namespace snmpsubagent::detail
