// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_MASTERSESSION_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_MASTERSESSION_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "testkit/FileDescriptor.h"
#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

// The subagent is waited for in vain: it has closed the connection, or stays
// silent for too long.
struct NoSubAgent : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The master agent's end of one AgentX session. It grants all requests of the
// subagent, and sends requests itself.
//
// Every operation that waits throws NoSubAgent.
//
// Threads: one.
class MasterSession {
 public:
  // `timeout` is how long to wait for the subagent, `id` the session ID that it
  // gets.
  MasterSession(FileDescriptor connection, std::chrono::seconds timeout,
                std::uint32_t id = 1);

  std::uint32_t Id() const { return id_; }

  // Sends requests in the byte order of these flags (see Header) from now on.
  void SetByteOrder(std::uint8_t flags) { byteOrder_ = flags; }

  // Sends requests in this context from now on; in the default one without.
  void SetContext(std::optional<std::string> context) {
    context_ = std::move(context);
  }

  // Grants requests of the subagent until `done`, which is called after every
  // message, returns true.
  void ServeUntil(const std::function<bool()>& done);

  // The next message of the subagent, which waits for the response.
  Pdu Next();

  // Records a request of the subagent and grants it.
  void Grant(const Pdu& asked);

  // Responds to a request of the subagent.
  void Answer(const Pdu& asked, std::uint16_t error);

  // Sends these bytes, which may be no message at all.
  void SendBytes(const Bytes& bytes);

  // Ends the connection in a way that the subagent sees as a failure.
  void Reset();

  // Sends a request, as part of a new or of the given transaction; returns the
  // packet ID of its response.
  std::uint32_t Send(const Body& request);
  std::uint32_t Send(const Body& request, std::uint32_t transactionId);

  // The next response, to whichever request. Requests of the subagent are
  // granted meanwhile.
  Pdu Receive();

  // Sends a request, as part of a new or of the given transaction, and returns
  // its response. Requires: no other request is outstanding.
  Response Ask(const Body& request);
  Response Ask(const Body& request, std::uint32_t transactionId);

  // The number of a transaction that is still to begin.
  std::uint32_t NewTransaction() { return ++lastTransactionId_; }

  // Whether the subagent responds to CleanupSet, as Net-SNMP's agent library
  // does although RFC 2741 specifies no response; it does unless this says
  // otherwise.
  void SetCleanupIsAnswered(bool answered) { cleanupIsAnswered_ = answered; }

  // A SET in all its phases: the response to CommitSet or, when the subagent
  // refuses, to TestSet. When it returns, the value is written.
  Response Set(const std::vector<Varbind>& varbinds);

  // The subtrees that are registered now.
  const std::vector<Oid>& Registered() const { return registered_; }

  // The notifications received since the last call.
  std::vector<Notify> TakeNotifications();

 private:
  std::uint32_t Uptime() const;

  FileDescriptor connection_;
  std::chrono::steady_clock::time_point start_;
  std::uint32_t id_;
  std::uint8_t byteOrder_ = kNetworkByteOrder;
  bool cleanupIsAnswered_ = true;
  std::optional<std::string> context_;
  Bytes received_;  // and not yet consumed
  std::uint32_t lastPacketId_ = 0;
  std::uint32_t lastTransactionId_ = 0;
  std::vector<Oid> registered_;
  std::vector<Notify> notifications_;
};

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_MASTERSESSION_H_
