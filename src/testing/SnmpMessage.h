// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_SNMPMESSAGE_H_
#define SNMPSUBAGENT_TESTING_SNMPMESSAGE_H_

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "snmpsubagent/testing/Response.h"

// Messages of SNMPv2c (RFC 1901, RFC 3416) between managers and agents.
namespace snmpsubagent::testing::internal {

// The tags of the PDUs (RFC 3416, section 3).
enum class PduTag : std::uint8_t {
  Get = 0xa0,
  GetNext = 0xa1,
  Response = 0xa2,
  Set = 0xa3,
  GetBulk = 0xa5,
  Inform = 0xa6,
  Trap = 0xa7
};

struct SnmpMessage {
  PduTag tag;
  std::int32_t requestId = 0;
  // error-status and error-index; of a GETBULK, non-repeaters and
  // max-repetitions.
  std::int32_t first = 0;
  std::int32_t second = 0;
  std::vector<Varbind> varbinds = {};
};

// What UDP carries at most (RFC 768).
inline constexpr std::size_t kMaxSnmpSize = 65507;

// With the community "public".
std::string EncodeSnmp(const SnmpMessage& message);

// Throws std::runtime_error for anything else.
SnmpMessage DecodeSnmp(std::string_view bytes);

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_SNMPMESSAGE_H_
