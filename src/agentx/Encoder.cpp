// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Encoder.h"

#include <cassert>

#include "agentx/OidPrefix.h"

namespace snmpsubagent::agentx {

void Encoder::ObjectIdentifier(OidView oid, std::size_t reserved) {
  assert(oid.size() <= Oid::kMaxSize);
  const std::uint8_t prefix = PrefixOf(oid);
  const OidView rest = prefix == 0 ? oid : oid.After(kPrefixSize);
  const std::size_t size = rest.size() * sizeof(SubIdentifier);
  std::uint8_t* const room = Room(reserved + 4 + size) + reserved;
  room[0] = static_cast<std::uint8_t>(rest.size());
  room[1] = prefix;
  if (size > 0) std::memcpy(room + 4, rest.data(), size);
}

void Encoder::OctetString(std::string_view octets) {
  const auto size = static_cast<std::uint32_t>(octets.size());
  std::uint8_t* const room = Room(4 + (octets.size() + 3) / 4 * 4);
  std::memcpy(room, &size, sizeof size);
  if (size > 0) std::memcpy(room + 4, octets.data(), octets.size());
}

}  // namespace snmpsubagent::agentx
