// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_READCALL_H_
#define SNMPSUBAGENT_OBJECTS_READCALL_H_

#include <functional>
#include <memory>

#include "objects/DeferredCall.h"
#include "objects/ReadRequest.h"

namespace snmpsubagent::detail {

// One value of a request that the application answers when it can, also while
// its function is still running.
class ReadCall final : public DeferredCall {
 public:
  explicit ReadCall(ReadRequest& request);

  void Value(const std::function<void(ValueWriter&)>& write) override;
  void Absent() override;
  bool Set(SetError error) override;
  void Lose() override;

  // Under the agent's lock.
  Answer Result() const { return result_; }
  void Suspend() { suspended_ = true; }
  void Abandon() { request_.reset(); }

 private:
  bool Give(Answer answer, const std::function<void(ValueWriter&)>& write);

  std::weak_ptr<AgentState> agent_;
  // The rest is guarded by the agent's lock.
  std::weak_ptr<ReadRequest> request_;  // null once it is answered or given up
  bool suspended_ = false;
  Answer result_ = Answer::Deferred;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_READCALL_H_
