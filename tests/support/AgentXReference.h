// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SUPPORT_AGENTXREFERENCE_H_
#define SNMPSUBAGENT_TESTS_SUPPORT_AGENTXREFERENCE_H_

#include <string>
#include <vector>

#include "agentx/Message.h"
#include "testkit/agentx/Codec.h"

// The tests' own reading of RFC 2741, which knows nothing of the one under
// test: what one writes, the other has to read to the same.
namespace snmpsubagent::agentx {

namespace reference = testkit::agentx;
using reference::Bytes;

inline reference::Oid ToReference(OidView oid) {
  return {oid.begin(), oid.end()};
}

inline reference::Value ToReference(const ValueView& value) {
  using Type = reference::Type;
  reference::Value same;
  same.type = static_cast<Type>(value.type);
  switch (value.type) {
    case ValueType::Integer:
      same.content = static_cast<std::int32_t>(value.number);
      break;
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
      same.content = static_cast<std::uint32_t>(value.number);
      break;
    case ValueType::Counter64:
      same.content = value.number;
      break;
    case ValueType::OctetString:
    case ValueType::IpAddress:
    case ValueType::Opaque:
      same.content = std::string(value.octets);
      break;
    case ValueType::ObjectIdentifier:
      same.content = ToReference(value.oid);
      break;
    default:
      break;
  }
  return same;
}

inline std::vector<reference::Varbind> ToReference(
    const std::vector<Varbind>& varbinds) {
  std::vector<reference::Varbind> same;
  for (const Varbind& varbind : varbinds) {
    same.push_back({ToReference(varbind.name), ToReference(varbind.value)});
  }
  return same;
}

inline std::vector<reference::SearchRange> ToReference(
    const std::vector<SearchRange>& ranges) {
  std::vector<reference::SearchRange> same;
  for (const SearchRange& range : ranges) {
    same.push_back(
        {ToReference(range.start), range.include, ToReference(range.end)});
  }
  return same;
}

inline reference::Body BodyOf(const Request& request) {
  switch (request.header.type) {
    case PduType::Get:
      return reference::Get{ToReference(*request.ranges)};
    case PduType::GetNext:
      return reference::GetNext{ToReference(*request.ranges)};
    case PduType::GetBulk:
      return reference::GetBulk{request.nonRepeaters, request.maxRepetitions,
                                ToReference(*request.ranges)};
    case PduType::TestSet:
      return reference::TestSet{ToReference(*request.varbinds)};
    case PduType::CommitSet:
      return reference::CommitSet{};
    case PduType::UndoSet:
      return reference::UndoSet{};
    default:
      return reference::CleanupSet{};
  }
}

// The request as the reference would have it, to be encoded and compared.
inline reference::Pdu ToReference(const Request& request) {
  reference::Pdu pdu;
  pdu.header = {1, request.header.flags, request.header.sessionId,
                request.header.transactionId, request.header.packetId};
  if ((request.header.flags & kNonDefaultContext) != 0) {
    pdu.context = std::string(request.context);
  }
  pdu.body = BodyOf(request);
  return pdu;
}

inline reference::Pdu Decoded(const Bytes& bytes) {
  return reference::Decode(bytes.data(), bytes.size());
}

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_TESTS_SUPPORT_AGENTXREFERENCE_H_
