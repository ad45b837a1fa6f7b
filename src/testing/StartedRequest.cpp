// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/StartedRequest.h"

#include <exception>
#include <utility>

namespace snmpsubagent::testing::internal {
namespace {

thread_local StartedRequest* running = nullptr;

}  // namespace

void StartedRequest::Run(const std::function<Response()>& answer) {
  running = this;
  try {
    TellAnswered(answer());
  } catch (...) {
    response_.set_exception(std::current_exception());
  }
  running = nullptr;
  TellSent();  // if there was nothing to send
}

void StartedRequest::Sent() {
  if (running != nullptr) running->TellSent();
}

void StartedRequest::Answered(const Response& response) {
  if (running != nullptr) running->TellAnswered(response);
}

void StartedRequest::TellSent() {
  if (!std::exchange(isSent_, true)) sent_.set_value();
}

void StartedRequest::TellAnswered(const Response& response) {
  if (!std::exchange(isAnswered_, true)) response_.set_value(response);
}

}  // namespace snmpsubagent::testing::internal
