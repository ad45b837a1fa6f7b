// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/ResponseWriter.h"

namespace snmpsubagent::agentx {
namespace {

// sysUpTime, which means nothing in a Response of a subagent's, error, index.
constexpr std::size_t kErrorOffset = 4;
constexpr std::size_t kIndexOffset = 6;
constexpr std::size_t kFieldsSize = 8;

Header ResponseTo(Header request) {
  request.type = PduType::Response;
  return request;
}

}  // namespace

ResponseWriter::ResponseWriter(std::vector<std::uint8_t>& out,
                               const Header& request)
    : message_(out, ResponseTo(request)), varbinds_(out), payload_(out.size()) {
  message_.Payload().Reserved(kFieldsSize);
}

void ResponseWriter::Refuse(Error error, std::uint16_t index) {
  Encoder& payload = message_.Payload();
  payload.Rewind(payload_ + kFieldsSize);
  payload.NumberAt(payload_ + kErrorOffset, static_cast<std::uint16_t>(error));
  payload.NumberAt(payload_ + kIndexOffset, index);
}

}  // namespace snmpsubagent::agentx
