// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Link.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace snmpsubagent::testing::internal {

testkit::FileDescriptor Link::End() {
  shutdown(Descriptor(), SHUT_WR);
  return std::move(socket_);
}

void Link::Open(std::string description) {
  open_ = true;
  description_ = std::move(description);
}

bool Link::Receive() {
  std::array<std::uint8_t, 65536> buffer;
  const ssize_t size =
      recv(Descriptor(), buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (size > 0)
    input_.insert(input_.end(), buffer.begin(), buffer.begin() + size);
  return size > 0 || (size < 0 && (errno == EAGAIN || errno == EINTR));
}

std::optional<wire::Pdu> Link::TakeMessage() {
  if (input_.size() < wire::kHeaderSize) return std::nullopt;
  const std::size_t size = wire::MessageSize(input_.data());
  if (input_.size() < size) return std::nullopt;
  wire::Pdu message = wire::Decode(input_.data(), size);
  input_.erase(input_.begin(),
               input_.begin() + static_cast<std::ptrdiff_t>(size));
  return message;
}

std::uint32_t Link::Ask(wire::Pdu request) {
  request.header.sessionId = id_;
  request.header.packetId = ++lastPacketId_;
  Queue(std::move(request));
  return lastPacketId_;
}

void Link::Answer(const wire::Pdu& request, wire::Response response) {
  wire::Header header = request.header;
  header.flags &= wire::kNetworkByteOrder;
  header.sessionId = id_;
  Queue({header, {}, std::move(response)});
}

void Link::Queue(wire::Pdu message) {
  const wire::Bytes bytes = wire::Encode(std::move(message));
  output_.insert(output_.end(), bytes.begin(), bytes.end());
  Flush();
}

// That the subagent has gone shows in Receive().
void Link::Flush() {
  while (!output_.empty()) {
    const ssize_t size = send(Descriptor(), output_.data(), output_.size(),
                              MSG_NOSIGNAL | MSG_DONTWAIT);
    if (size <= 0) return;
    output_.erase(output_.begin(), output_.begin() + size);
  }
}

void Link::Keep(std::uint32_t packetId, wire::Response response) {
  responses_[packetId] = std::move(response);
}

wire::Response Link::TakeResponse(std::uint32_t packetId) {
  return std::move(responses_.extract(packetId).mapped());
}

}  // namespace snmpsubagent::testing::internal
