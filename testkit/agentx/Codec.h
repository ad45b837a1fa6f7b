// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_CODEC_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_CODEC_H_

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

using Bytes = std::vector<std::uint8_t>;

// Bytes that are no AgentX message; what() says where they go wrong.
struct Malformed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The size of every message's header, in bytes.
inline constexpr std::size_t kHeaderSize = 20;

// The message in the byte order that its flags name. Throws
// std::bad_variant_access if a value's content is not of its type, and
// Malformed for a type that there is not.
Bytes Encode(Pdu pdu);

// The message that is exactly these `size` bytes. Reads nothing beyond them.
// Throws Malformed.
Pdu Decode(const std::uint8_t* data, std::size_t size);

// The size in bytes, header included, of the message whose first kHeaderSize
// bytes are at `header`.
std::size_t MessageSize(const std::uint8_t* header);

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_CODEC_H_
