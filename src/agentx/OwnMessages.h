// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_OWNMESSAGES_H_
#define SNMPSUBAGENT_AGENTX_OWNMESSAGES_H_

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "agentx/Message.h"
#include "agentx/StandingRequests.h"

// The requests of a subagent's (RFC 2741, 6.2). Each is written behind what
// `out` has already; of `header` the ids count.
namespace snmpsubagent::agentx {

// Seconds as a message carries them: 0 to 255.
std::uint8_t TimeoutOctet(std::chrono::seconds timeout);

// Of the description the first 255 octets are sent.
void WriteOpen(std::vector<std::uint8_t>& out, Header header,
               std::chrono::seconds timeout, OidView id,
               std::string_view description);
void WriteClose(std::vector<std::uint8_t>& out, Header header,
                CloseReason reason);
void WriteRegister(std::vector<std::uint8_t>& out, Header header,
                   const Registration& registration);
void WriteUnregister(std::vector<std::uint8_t>& out, Header header,
                     const Registration& registration);
void WriteAddAgentCaps(std::vector<std::uint8_t>& out, Header header,
                       const AgentCaps& caps);
void WriteRemoveAgentCaps(std::vector<std::uint8_t>& out, Header header,
                          const AgentCaps& caps);
void WriteNotify(std::vector<std::uint8_t>& out, Header header,
                 std::string_view context,
                 const std::vector<std::uint8_t>& varbinds);
void WritePing(std::vector<std::uint8_t>& out, Header header);

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_OWNMESSAGES_H_
