// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_OIDPREFIX_H_
#define SNMPSUBAGENT_AGENTX_OIDPREFIX_H_

#include <cstddef>
#include <cstdint>

#include "snmpsubagent/Oid.h"

// Of an OID that begins with 1.3.6.1.x, where x is 1 to 255, a message carries
// x in one octet instead of these five (RFC 2741, 5.1).
namespace snmpsubagent::agentx {

inline constexpr SubIdentifier kInternet[] = {1, 3, 6, 1};
inline constexpr std::size_t kPrefixSize = 5;

// The x, or 0 if the OID does not begin so.
inline std::uint8_t PrefixOf(OidView oid) {
  if (oid.size() < kPrefixSize) return 0;
  if (!oid.StartsWith(OidView(kInternet, kPrefixSize - 1))) return 0;
  const SubIdentifier prefix = oid[kPrefixSize - 1];
  return prefix <= 255 ? static_cast<std::uint8_t>(prefix) : std::uint8_t{0};
}

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_OIDPREFIX_H_
