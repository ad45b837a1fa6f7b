// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_LINK_H_
#define SNMPSUBAGENT_TESTING_LINK_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "testkit/FileDescriptor.h"
#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Pdu.h"

namespace snmpsubagent::testing::internal {

namespace wire = testkit::agentx;

// A master agent's end of the connection with a subagent, and of the session
// over it. Nothing in it waits.
//
// Threads: one at a time.
class Link {
 public:
  // `id` is that of the session.
  Link(testkit::FileDescriptor socket, std::uint32_t id)
      : socket_(std::move(socket)), id_(id) {}

  int Descriptor() const { return socket_.Number(); }
  std::uint32_t Id() const { return id_; }

  // Sends no more, and gives the socket away. The subagent sees the end.
  testkit::FileDescriptor End();

  bool IsOpen() const { return open_; }
  void Open(std::string description);
  const std::string& Description() const { return description_; }

  // Takes in what has arrived; false if the subagent has gone.
  bool Receive();
  // The next whole message. Throws testkit::agentx::Malformed.
  std::optional<wire::Pdu> TakeMessage();

  // Queues a request; returns its packet ID.
  std::uint32_t Ask(wire::Pdu request);
  // Queues a response.
  void Answer(const wire::Pdu& request, wire::Response response);
  bool HasOutput() const { return !output_.empty(); }
  // Sends what the socket takes.
  void Flush();

  // Keeps the response until TakeResponse().
  void Keep(std::uint32_t packetId, wire::Response response);
  bool HasResponse(std::uint32_t packetId) const {
    return responses_.count(packetId) != 0;
  }
  wire::Response TakeResponse(std::uint32_t packetId);

 private:
  void Queue(wire::Pdu message);

  testkit::FileDescriptor socket_;
  std::uint32_t id_;
  bool open_ = false;
  std::string description_;
  wire::Bytes input_;
  wire::Bytes output_;
  std::uint32_t lastPacketId_ = 0;
  std::map<std::uint32_t, wire::Response> responses_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_LINK_H_
