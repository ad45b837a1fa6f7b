// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_SETCALL_H_
#define SNMPSUBAGENT_OBJECTS_SETCALL_H_

#include <memory>
#include <optional>

#include "objects/DeferredCall.h"
#include "objects/Transaction.h"

namespace snmpsubagent::detail {

// A step of a SET that the application answers when it can, also while its
// function is still running.
class SetCall final : public DeferredCall {
 public:
  explicit SetCall(Transaction& transaction);

  void Value(const std::function<void(ValueWriter&)>&) override {}
  void Absent() override {}
  bool Set(SetError error) override;
  void Lose() override;

  // Under the agent's lock.
  bool Result(SetError& error) const {
    if (result_) error = *result_;
    return result_.has_value();
  }
  void Suspend() { suspended_ = true; }
  void Abandon() { transaction_.reset(); }

 private:
  std::weak_ptr<AgentState> agent_;
  // The rest is guarded by the agent's lock.
  std::weak_ptr<Transaction> transaction_;  // null once it is answered
  bool suspended_ = false;
  std::optional<SetError> result_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_SETCALL_H_
