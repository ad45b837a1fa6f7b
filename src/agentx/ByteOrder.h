// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_BYTEORDER_H_
#define SNMPSUBAGENT_AGENTX_BYTEORDER_H_

#include <cstdint>

namespace snmpsubagent::agentx {

inline constexpr bool kThisIsBigEndian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;

inline std::uint16_t Swapped(std::uint16_t number) {
  return __builtin_bswap16(number);
}
inline std::uint32_t Swapped(std::uint32_t number) {
  return __builtin_bswap32(number);
}
inline std::uint64_t Swapped(std::uint64_t number) {
  return __builtin_bswap64(number);
}

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_BYTEORDER_H_
