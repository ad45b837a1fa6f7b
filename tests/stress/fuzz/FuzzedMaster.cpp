// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FuzzedMaster.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "Input.h"

namespace agentx = testkit::agentx;

namespace {

// The agent library puts the context of a request into its response, where
// RFC 2741 has none.
bool HasContextOfRequest(const agentx::Bytes& bytes) {
  constexpr std::size_t kType = 1;
  constexpr std::size_t kFlags = 2;
  constexpr std::uint8_t kResponse = 18;
  return bytes[kType] == kResponse &&
         (bytes[kFlags] & agentx::kNonDefaultContext) != 0;
}

agentx::Pdu Decoded(const agentx::Bytes& bytes, std::size_t size) {
  try {
    return agentx::Decode(bytes.data(), size);
  } catch (const agentx::Malformed& malformed) {
    Require(false, malformed.what());
    throw;
  }
}

}  // namespace

void FuzzedMaster::Work() {
  do {
    if (!connection_.IsOpen()) Accept();
    while (received_.size() >= agentx::kHeaderSize) {
      const std::size_t size = agentx::MessageSize(received_.data());
      if (received_.size() < size) break;
      const bool proper = !HasContextOfRequest(received_);
      const agentx::Pdu message =
          proper ? Decoded(received_, size) : agentx::Pdu{};
      received_.erase(received_.begin(),
                      received_.begin() + static_cast<std::ptrdiff_t>(size));
      if (proper) Take(message);
    }
  } while (Receive());
}

void FuzzedMaster::Send(const agentx::Bytes& bytes) {
  if (!connection_.IsOpen()) return;
  // Inputs are far smaller than the socket's buffer.
  send(connection_.Number(), bytes.data(), bytes.size(),
       MSG_NOSIGNAL | MSG_DONTWAIT);
}

void FuzzedMaster::Disconnect(bool reset) {
  if (connection_.IsOpen() && reset) {
    const linger abort{1, 0};
    setsockopt(connection_.Number(), SOL_SOCKET, SO_LINGER, &abort,
               sizeof abort);
  }
  connection_ = testkit::FileDescriptor();
  received_.clear();
  framing_ = Framing();
  registrations_ = 0;
}

void FuzzedMaster::Forget() {
  answers_.clear();
  responses_.clear();
}

const agentx::Response* FuzzedMaster::ResponseTo(std::uint32_t packetId) const {
  const auto found = responses_.find(packetId);
  return found == responses_.end() ? nullptr : &found->second;
}

void FuzzedMaster::Accept() {
  try {
    connection_ = listener_.Accept(std::chrono::milliseconds(0));
  } catch (const std::runtime_error&) {
    return;  // nobody there
  }
  const int on = 1;
  setsockopt(connection_.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

bool FuzzedMaster::Receive() {
  if (!connection_.IsOpen()) return false;
  std::array<std::uint8_t, 65536> buffer;
  const ssize_t size =
      recv(connection_.Number(), buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (size > 0) {
    received_.insert(received_.end(), buffer.begin(), buffer.begin() + size);
    return true;
  }
  const bool over = size == 0 || (errno != EAGAIN && errno != EINTR);
  if (over) Disconnect(false);
  return over;
}

void FuzzedMaster::Take(const agentx::Pdu& message) {
  if (const auto* const response =
          std::get_if<agentx::Response>(&message.body)) {
    responses_[message.header.packetId] = *response;
    return;
  }
  if (std::holds_alternative<agentx::Register>(message.body)) ++registrations_;
  agentx::Pdu grant{message.header, {}, agentx::Response{1, 0, 0, {}}};
  grant.header.flags &= agentx::kNetworkByteOrder;
  grant.header.sessionId = kSessionId;
  if (answers_.empty()) return Send(agentx::Encode(grant));
  const Answer answer = std::exchange(answers_.front(), {});
  answers_.pop_front();
  Send(answer(grant));
}
