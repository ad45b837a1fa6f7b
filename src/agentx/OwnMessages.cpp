// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/OwnMessages.h"

#include <algorithm>

#include "agentx/MessageWriter.h"

namespace snmpsubagent::agentx {
namespace {

constexpr std::size_t kMaxDescription = 255;

Header As(PduType type, Header header) {
  header.type = type;
  return header;
}

// What Register and Unregister share; only the one has a timeout.
void WriteRegion(Encoder& payload, std::uint8_t timeout,
                 const Registration& registration) {
  payload.Number(timeout);
  payload.Number(registration.priority);
  payload.Reserved(2);  // no range of sub-identifiers
  payload.ObjectIdentifier(registration.subtree);
}

}  // namespace

std::uint8_t TimeoutOctet(std::chrono::seconds timeout) {
  using Count = std::chrono::seconds::rep;
  return static_cast<std::uint8_t>(
      std::clamp<Count>(timeout.count(), Count{0}, Count{255}));
}

void WriteOpen(std::vector<std::uint8_t>& out, Header header,
               std::chrono::seconds timeout, OidView id,
               std::string_view description) {
  MessageWriter message(out, As(PduType::Open, header));
  message.Payload().Number(TimeoutOctet(timeout));
  message.Payload().Reserved(3);
  message.Payload().ObjectIdentifier(id);
  message.Payload().OctetString(description.substr(0, kMaxDescription));
  message.Finish();
}

void WriteClose(std::vector<std::uint8_t>& out, Header header,
                CloseReason reason) {
  MessageWriter message(out, As(PduType::Close, header));
  message.Payload().Number(static_cast<std::uint8_t>(reason));
  message.Payload().Reserved(3);
  message.Finish();
}

void WriteRegister(std::vector<std::uint8_t>& out, Header header,
                   const Registration& registration) {
  MessageWriter message(out, As(PduType::Register, header),
                        registration.context);
  WriteRegion(message.Payload(), TimeoutOctet(registration.timeout),
              registration);
  message.Finish();
}

void WriteUnregister(std::vector<std::uint8_t>& out, Header header,
                     const Registration& registration) {
  MessageWriter message(out, As(PduType::Unregister, header),
                        registration.context);
  WriteRegion(message.Payload(), 0, registration);
  message.Finish();
}

void WriteAddAgentCaps(std::vector<std::uint8_t>& out, Header header,
                       const AgentCaps& caps) {
  MessageWriter message(out, As(PduType::AddAgentCaps, header), caps.context);
  message.Payload().ObjectIdentifier(caps.id);
  message.Payload().OctetString(caps.description);
  message.Finish();
}

void WriteRemoveAgentCaps(std::vector<std::uint8_t>& out, Header header,
                          const AgentCaps& caps) {
  MessageWriter message(out, As(PduType::RemoveAgentCaps, header),
                        caps.context);
  message.Payload().ObjectIdentifier(caps.id);
  message.Finish();
}

void WriteNotify(std::vector<std::uint8_t>& out, Header header,
                 std::string_view context,
                 const std::vector<std::uint8_t>& varbinds) {
  MessageWriter message(out, As(PduType::Notify, header), context);
  message.Payload().Encoded(varbinds);
  message.Finish();
}

void WritePing(std::vector<std::uint8_t>& out, Header header) {
  MessageWriter(out, As(PduType::Ping, header)).Finish();
}

}  // namespace snmpsubagent::agentx
