// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/SnmpServer.h"

#include <optional>
#include <utility>

namespace snmpsubagent::testing::internal {
namespace {

std::optional<Request> RequestOf(const SnmpMessage& message) {
  const auto of = [&](Request::Kind kind) {
    return Request{kind, message.varbinds};
  };
  switch (message.tag) {
    case PduTag::Get:
      return of(Request::Kind::Get);
    case PduTag::GetNext:
      return of(Request::Kind::GetNext);
    case PduTag::Set:
      return of(Request::Kind::Set);
    case PduTag::GetBulk: {
      Request bulk = of(Request::Kind::GetBulk);
      bulk.nonRepeaters = static_cast<std::size_t>(message.first);
      bulk.maxRepetitions = static_cast<std::size_t>(message.second);
      return bulk;
    }
    default:
      return std::nullopt;
  }
}

// A response of a GETBULK is shortened (RFC 3416, 4.2.3), others are tooBig.
std::string Fitting(SnmpMessage message, bool mayBeShorter) {
  std::string bytes = EncodeSnmp(message);
  while (bytes.size() > kMaxSnmpSize) {
    if (!mayBeShorter) {
      message.first = static_cast<std::int32_t>(ErrorStatus::TooBig);
      message.varbinds.clear();
    }
    message.varbinds.resize(message.varbinds.size() / 2);
    bytes = EncodeSnmp(message);
  }
  return bytes;
}

}  // namespace

SnmpServer::SnmpServer(Function answer)
    : answer_(std::move(answer)),
      listener_([this](const SnmpMessage& message, const sockaddr_in& manager) {
        Serve(message, manager);
      }) {}

void SnmpServer::Serve(const SnmpMessage& message, const sockaddr_in& manager) {
  const auto request = RequestOf(message);
  if (!request) return;
  Response response = answer_(*request);
  SnmpMessage answer{PduTag::Response, message.requestId};
  answer.first = static_cast<std::int32_t>(response.error);
  answer.second = static_cast<std::int32_t>(response.index);
  answer.varbinds = std::move(response.varbinds);
  listener_.Socket().Send(
      Fitting(std::move(answer), request->kind == Request::Kind::GetBulk),
      manager);
}

}  // namespace snmpsubagent::testing::internal
