// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_FUZZEDMASTER_H_
#define SNMPSUBAGENT_TESTS_FUZZ_FUZZEDMASTER_H_

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "Framing.h"
#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/Pdu.h"

// A master agent that sends given bytes, and grants the subagent's requests or
// sends a given response instead. It accepts one connection after the other.
// What the subagent sends must always be a proper AgentX message.
class FuzzedMaster {
 public:
  // What is sent instead of a grant, made of it.
  using Answer =
      std::function<testkit::agentx::Bytes(const testkit::agentx::Pdu& grant)>;

  static constexpr std::uint32_t kSessionId = 7;

  int Port() const { return listener_.Port(); }

  // Reads what the subagent has sent, and responds.
  void Work();

  // `bytes`, to be sent next, cut where a message ends.
  std::vector<testkit::agentx::Bytes> Split(
      const testkit::agentx::Bytes& bytes) {
    return framing_.Split(bytes);
  }

  // Sends the bytes; they are lost if there is no connection.
  void Send(const testkit::agentx::Bytes& bytes);

  // Ends the connection: in order, or by a reset.
  void Disconnect(bool reset);

  // The response to the next request of the subagent. Several are used one
  // after the other; after the last one everything is granted.
  void AnswerNext(Answer answer) { answers_.push_back(std::move(answer)); }

  // Forgets unused answers, and responses.
  void Forget();

  // How many registrations this connection has seen.
  std::size_t Registrations() const { return registrations_; }

  // The response with that packet id, if it has come; else null.
  const testkit::agentx::Response* ResponseTo(std::uint32_t packetId) const;

 private:
  void Accept();
  // Whether something came.
  bool Receive();
  void Take(const testkit::agentx::Pdu& message);

  const testkit::agentx::Listener listener_;
  testkit::FileDescriptor connection_;
  testkit::agentx::Bytes received_;  // and not yet taken
  Framing framing_;                  // of what is sent
  std::size_t registrations_ = 0;
  std::deque<Answer> answers_;
  std::map<std::uint32_t, testkit::agentx::Response> responses_;
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_FUZZEDMASTER_H_
