// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_VALUEVIEW_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_VALUEVIEW_H_

#include <cstdint>
#include <string_view>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

// What a varbind carries. The numbers are those of AgentX (RFC 2741, 5.4).
enum class ValueType : std::uint16_t {
  Integer = 2,  // INTEGER and Integer32, enumerations, TruthValue
  OctetString = 4,
  Null = 5,
  ObjectIdentifier = 6,
  IpAddress = 64,
  Counter32 = 65,
  Gauge32 = 66,  // Unsigned32 too
  TimeTicks = 67,
  Opaque = 68,
  Counter64 = 70,
  NoSuchObject = 128,
  NoSuchInstance = 129,
  EndOfMibView = 130
};

// A value as it came in: its type, and of the rest what the type has. Valid
// while the request is.
struct ValueView {
  ValueType type = ValueType::Null;
  // Integer (its sign extended to 64 bits), Counter32, Gauge32, TimeTicks,
  // Counter64.
  std::uint64_t number = 0;
  // OctetString, IpAddress, Opaque.
  std::string_view octets;
  // ObjectIdentifier.
  OidView oid;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_VALUEVIEW_H_
