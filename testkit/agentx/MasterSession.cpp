// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/MasterSession.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace testkit::agentx {
namespace {

template <typename Option>
void SetOption(const FileDescriptor& socket, int level, int name,
               const Option& value) {
  setsockopt(socket.Number(), level, name, &value, sizeof value);
}

}  // namespace

MasterSession::MasterSession(FileDescriptor connection,
                             std::chrono::seconds timeout, std::uint32_t id)
    : connection_(std::move(connection)),
      start_(std::chrono::steady_clock::now()),
      id_(id) {
  // Requests leave at once, so that a delay is the subagent's own.
  SetOption(connection_, IPPROTO_TCP, TCP_NODELAY, 1);
  SetOption(connection_, SOL_SOCKET, SO_RCVTIMEO,
            timeval{static_cast<time_t>(timeout.count()), 0});
}

void MasterSession::ServeUntil(const std::function<bool()>& done) {
  while (!done()) Grant(Next());
}

Pdu MasterSession::Next() {
  while (received_.size() < kHeaderSize ||
         received_.size() < MessageSize(received_.data())) {
    std::array<std::uint8_t, 65536> buffer;
    const ssize_t size =
        recv(connection_.Number(), buffer.data(), buffer.size(), 0);
    if (size == 0) throw NoSubAgent("the subagent has disconnected");
    if (size < 0) throw NoSubAgent("the subagent does not answer");
    received_.insert(received_.end(), buffer.begin(), buffer.begin() + size);
  }
  const std::size_t size = MessageSize(received_.data());
  Pdu message = Decode(received_.data(), size);
  received_.erase(received_.begin(),
                  received_.begin() + static_cast<std::ptrdiff_t>(size));
  return message;
}

void MasterSession::Grant(const Pdu& asked) {
  if (std::holds_alternative<Response>(asked.body)) {
    throw std::runtime_error("response to a request that was not sent");
  }
  if (const auto* added = std::get_if<Register>(&asked.body)) {
    registered_.push_back(added->subtree);
  } else if (const auto* removed = std::get_if<Unregister>(&asked.body)) {
    const auto found =
        std::find(registered_.begin(), registered_.end(), removed->subtree);
    if (found != registered_.end()) registered_.erase(found);
  } else if (const auto* notify = std::get_if<Notify>(&asked.body)) {
    notifications_.push_back(*notify);
  }
  Answer(asked, 0);
}

void MasterSession::Answer(const Pdu& asked, std::uint16_t error) {
  Header header = asked.header;
  header.flags &= kNetworkByteOrder;
  header.sessionId = id_;
  SendBytes(Encode({header, {}, Response{Uptime(), error, 0, {}}}));
}

void MasterSession::SendBytes(const Bytes& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t size = send(connection_.Number(), bytes.data() + sent,
                              bytes.size() - sent, MSG_NOSIGNAL);
    if (size <= 0) throw NoSubAgent("the subagent has disconnected");
    sent += static_cast<std::size_t>(size);
  }
}

void MasterSession::Reset() {
  SetOption(connection_, SOL_SOCKET, SO_LINGER, linger{1, 0});
  connection_ = FileDescriptor();
}

std::uint32_t MasterSession::Send(const Body& request) {
  return Send(request, NewTransaction());
}

std::uint32_t MasterSession::Send(const Body& request,
                                  std::uint32_t transactionId) {
  ++lastPacketId_;
  SendBytes(Encode(
      {{1, byteOrder_, id_, transactionId, lastPacketId_}, context_, request}));
  return lastPacketId_;
}

Pdu MasterSession::Receive() {
  for (;;) {
    Pdu message = Next();
    if (std::holds_alternative<Response>(message.body)) return message;
    Grant(message);
  }
}

Response MasterSession::Ask(const Body& request) {
  return Ask(request, NewTransaction());
}

Response MasterSession::Ask(const Body& request, std::uint32_t transactionId) {
  const std::uint32_t packetId = Send(request, transactionId);
  Pdu answer = Receive();
  if (answer.header.packetId != packetId) {
    throw std::runtime_error("response to a request that was not sent");
  }
  return std::get<Response>(std::move(answer.body));
}

Response MasterSession::Set(const std::vector<Varbind>& varbinds) {
  const std::uint32_t transactionId = NewTransaction();
  Response result = Ask(TestSet{varbinds}, transactionId);
  if (result.error == 0) result = Ask(CommitSet{}, transactionId);
  // The agent library writes in this phase.
  if (cleanupIsAnswered_) {
    Ask(CleanupSet{}, transactionId);
  } else {
    Send(CleanupSet{}, transactionId);
  }
  return result;
}

std::vector<Notify> MasterSession::TakeNotifications() {
  return std::exchange(notifications_, {});
}

std::uint32_t MasterSession::Uptime() const {
  using Hundredths = std::chrono::duration<std::uint32_t, std::centi>;
  return std::chrono::duration_cast<Hundredths>(
             std::chrono::steady_clock::now() - start_)
      .count();
}

}  // namespace testkit::agentx
