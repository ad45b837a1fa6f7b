// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/SnmpClient.h"

#include <utility>

#include "testing/StartedRequest.h"

namespace snmpsubagent::testing::internal {
namespace {

PduTag TagOf(Request::Kind kind) {
  switch (kind) {
    case Request::Kind::GetNext:
      return PduTag::GetNext;
    case Request::Kind::GetBulk:
      return PduTag::GetBulk;
    case Request::Kind::Set:
      return PduTag::Set;
    case Request::Kind::Get:
      break;
  }
  return PduTag::Get;
}

}  // namespace

Response SnmpClient::Ask(const Request& request, int port) {
  auto lock = monitor_.Lock();
  const std::int32_t id = ++lastId_;
  SnmpMessage message{TagOf(request.kind), id};
  message.varbinds = request.varbinds;
  message.first = static_cast<std::int32_t>(request.nonRepeaters);
  message.second = static_cast<std::int32_t>(request.maxRepetitions);
  listener_.Socket().Send(EncodeSnmp(message), port);
  StartedRequest::Sent();
  if (!monitor_.WaitUntil(lock, [&] { return responses_.count(id) != 0; })) {
    throw TimedOut("the agent does not answer");
  }
  SnmpMessage response = std::move(responses_.extract(id).mapped());
  return {static_cast<ErrorStatus>(response.first),
          static_cast<std::size_t>(response.second),
          std::move(response.varbinds)};
}

void SnmpClient::Keep(const SnmpMessage& message) {
  if (message.tag != PduTag::Response) return;
  const auto lock = monitor_.Lock();
  responses_.insert_or_assign(message.requestId, message);
  monitor_.Changed();
}

}  // namespace snmpsubagent::testing::internal
