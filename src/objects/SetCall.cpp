// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/SetCall.h"

#include <mutex>

#include "objects/AgentState.h"

namespace snmpsubagent::detail {

SetCall::SetCall(Transaction& transaction)
    : agent_(transaction.Agent().weak_from_this()),
      transaction_(transaction.weak_from_this()) {}

bool SetCall::Set(SetError error) {
  const auto agent = agent_.lock();
  if (!agent) return false;
  const std::lock_guard lock(agent->Mutex());
  const auto transaction = transaction_.lock();
  if (!transaction) return false;
  transaction_.reset();
  result_ = error;
  if (!suspended_) return true;
  transaction->Resume(error);
  agent->Update();
  return true;
}

void SetCall::Lose() {
  const auto agent = agent_.lock();
  if (!agent) return;
  const std::lock_guard lock(agent->Mutex());
  const auto transaction = transaction_.lock();
  if (transaction && MissesAnswer(suspended_)) {
    agent->ReportLostAnswer(transaction->CurrentName());
  }
  Set(SetError::GenErr);
}

}  // namespace snmpsubagent::detail
