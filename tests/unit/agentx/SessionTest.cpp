// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SessionTest.h"

#include "agentx/VarbindWriter.h"
#include "testkit/agentx/Text.h"

namespace snmpsubagent::agentx {

bool SessionInHand::Pass(milliseconds time) {
  const Time end = now + time;
  bool keep = true;
  while (keep) {
    const std::optional<Time> deadline = session().NextDeadline();
    if (!deadline || *deadline > end) break;
    now = std::max(now, *deadline);
    keep = session().Advance(now);
    // Due once only, or a driver would turn for ever.
    const std::optional<Time> next = session().NextDeadline();
    if (next && *next <= now) {
      ADD_FAILURE() << "a deadline stays due";
      break;
    }
  }
  now = end;
  return keep;
}

std::vector<reference::Pdu> SessionInHand::Sent() {
  std::vector<reference::Pdu> sent;
  Output& output = session().Output();
  while (!output.empty()) {
    const std::size_t size = reference::MessageSize(output.data());
    EXPECT_LE(size, output.size());
    sent.push_back(reference::Decode(output.data(), size));
    output.Sent(size);
  }
  return sent;
}

std::vector<std::string> SessionInHand::SentTypes() {
  std::vector<std::string> types;
  for (const reference::Pdu& pdu : Sent()) {
    types.emplace_back(reference::NameOf(pdu.body));
  }
  return types;
}

bool SessionInHand::Receive(const Bytes& bytes) {
  return session().Receive(bytes.data(), bytes.size(), now);
}

bool SessionInHand::Receive(reference::Body body, std::uint32_t sessionId,
                            std::uint32_t packetId) {
  reference::Pdu pdu;
  pdu.header.sessionId = sessionId;
  pdu.header.transactionId = 9;
  pdu.header.packetId = packetId;
  pdu.body = std::move(body);
  return Receive(reference::Encode(pdu));
}

bool SessionInHand::Answer(const reference::Pdu& request, Error error,
                           std::uint32_t sysUpTime) {
  reference::Pdu pdu;
  pdu.header = request.header;
  pdu.header.sessionId = kSessionId;
  pdu.header.flags = kNetworkByteOrder;
  pdu.body =
      reference::Response{sysUpTime, static_cast<std::uint16_t>(error), 0, {}};
  return Receive(reference::Encode(pdu));
}

void SessionInHand::AnswerAll() {
  for (auto sent = Sent(); !sent.empty(); sent = Sent()) {
    for (const reference::Pdu& pdu : sent) Answer(pdu);
  }
}

void SessionInHand::StartConnecting() { session().Start(now); }

void SessionInHand::StartOpening() {
  StartConnecting();
  session().Connected(now);
}

void SessionInHand::StartOpen() {
  StartOpening();
  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 1U);
  ASSERT_TRUE(Answer(sent[0]));
  ASSERT_EQ(told.front(), "opened");
  told.erase(told.begin());
}

Bytes SessionInHand::NotifyPayload(SubIdentifier last) {
  Bytes payload;
  VarbindWriter varbinds(payload);
  varbinds.Name(Oid{1, 3, 6, 1, 4, 1, 32473, last});
  varbinds.Integer(1);
  return payload;
}

std::vector<SubIdentifier> SessionInHand::LastOf(
    const std::vector<reference::Pdu>& sent) {
  std::vector<SubIdentifier> last;
  for (const reference::Pdu& pdu : sent) {
    const auto* const notify = std::get_if<reference::Notify>(&pdu.body);
    if (notify) last.push_back(notify->varbinds.at(0).name.back());
  }
  return last;
}

}  // namespace snmpsubagent::agentx
