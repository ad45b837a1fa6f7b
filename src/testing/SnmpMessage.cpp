// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/SnmpMessage.h"

#include "testing/Ber.h"

namespace snmpsubagent::testing::internal {
namespace {

constexpr char kCommunity[] = "public";
constexpr std::int64_t kVersion2c = 1;

}  // namespace

std::string EncodeSnmp(const SnmpMessage& message) {
  std::string varbinds;
  for (const Varbind& varbind : message.varbinds) {
    varbinds += BerElement(kSequenceTag,
                           BerOid(varbind.name) + BerValue(varbind.value));
  }
  const std::string pdu =
      BerInteger(message.requestId) + BerInteger(message.first) +
      BerInteger(message.second) + BerElement(kSequenceTag, varbinds);
  return BerElement(
      kSequenceTag,
      BerInteger(kVersion2c) + BerElement(kOctetsTag, kCommunity) +
          BerElement(static_cast<std::uint8_t>(message.tag), pdu));
}

SnmpMessage DecodeSnmp(std::string_view bytes) {
  BerReader message(BerReader(bytes).Take(kSequenceTag));
  if (message.Integer() != kVersion2c) {
    throw std::runtime_error("no SNMP message: another version than 2c");
  }
  message.Take(kOctetsTag);  // whatever the community
  SnmpMessage result{static_cast<PduTag>(message.Tag())};
  BerReader pdu(message.Take(message.Tag()));
  result.requestId = static_cast<std::int32_t>(pdu.Integer());
  result.first = static_cast<std::int32_t>(pdu.Integer());
  result.second = static_cast<std::int32_t>(pdu.Integer());
  BerReader varbinds(pdu.Take(kSequenceTag));
  while (!varbinds.AtEnd()) {
    BerReader varbind(varbinds.Take(kSequenceTag));
    const Oid name = varbind.ObjectIdentifier();
    result.varbinds.push_back({name, varbind.Value()});
  }
  return result;
}

}  // namespace snmpsubagent::testing::internal
