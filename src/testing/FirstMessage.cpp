// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/FirstMessage.h"

#include <utility>

namespace snmpsubagent::testing::internal {
namespace {

thread_local std::shared_ptr<std::promise<void>> awaited;

}  // namespace

FirstMessage::FirstMessage(std::shared_ptr<std::promise<void>> sent) {
  awaited = std::move(sent);
}

FirstMessage::~FirstMessage() { Sent(); }

void FirstMessage::Sent() {
  const auto promise = std::exchange(awaited, nullptr);
  if (promise) promise->set_value();
}

}  // namespace snmpsubagent::testing::internal
