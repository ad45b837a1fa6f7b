// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Faults.h"

namespace agentx = testkit::agentx;

using testkit::agentx::MasterSession;
using testkit::agentx::Pdu;

namespace {

constexpr std::uint32_t kSet = 4711;

agentx::TestSet NewLevel() {
  return {{{Device::Scalar(), {agentx::Type::kInteger, std::int32_t{1}}}}};
}

agentx::Get Level() { return {{{Device::Scalar(), true, {}}}}; }

// The next message of that type; what comes before is granted.
template <typename Body>
Pdu Await(MasterSession& session) {
  for (;;) {
    Pdu message = session.Next();
    if (std::holds_alternative<Body>(message.body)) return message;
    session.Grant(message);
  }
}

// The registration number `count`.
std::optional<Pdu> AwaitRegistration(MasterSession& session,
                                     std::size_t count) {
  for (;;) {
    Pdu message = Await<agentx::Register>(session);
    if (session.Registered().size() + 1 == count) return message;
    session.Grant(message);
  }
}

}  // namespace

std::vector<Moment> Moments() {
  const auto kConnection = Moment::From::kConnection;
  const auto kService = Moment::From::kService;
  using Asked = std::optional<Pdu>;
  return {{"before the session is opened", kConnection,
           [](MasterSession&, Device&) { return Asked(); }},
          {"opening the session", kConnection,
           [](MasterSession& session, Device&) -> Asked {
             return Await<agentx::Open>(session);
           }},
          {"at the first registration", kConnection,
           [](MasterSession& session, Device&) {
             return AwaitRegistration(session, 1);
           }},
          {"at the last registration", kConnection,
           [](MasterSession& session, Device&) {
             return AwaitRegistration(session, Device::Subtrees().size());
           }},
          {"idle", kService, [](MasterSession&, Device&) { return Asked(); }},
          {"with a read under way", kService,
           [](MasterSession& session, Device&) {
             session.Send(Level());
             return Asked();
           }},
          {"between test and commit", kService,
           [](MasterSession& session, Device&) {
             session.Ask(NewLevel(), kSet);
             return Asked();
           }},
          {"between commit and cleanup", kService,
           [](MasterSession& session, Device&) {
             session.Ask(NewLevel(), kSet);
             session.Ask(agentx::CommitSet{}, kSet);
             return Asked();
           }},
          {"at a notification", kService,
           [](MasterSession& session, Device& device) -> Asked {
             device.Notify();
             return Await<agentx::Notify>(session);
           }},
          {"at a ping", kService, [](MasterSession& session, Device&) -> Asked {
             return Await<agentx::Ping>(session);
           }}};
}

agentx::Bytes NextMessage(const MasterSession& session,
                          const std::optional<Pdu>& asked) {
  const agentx::Header request{1, agentx::kNetworkByteOrder, session.Id(), 1,
                               1};
  if (!asked) return agentx::Encode({request, {}, Level()});
  agentx::Header answer = asked->header;
  answer.sessionId = session.Id();
  answer.flags &= agentx::kNetworkByteOrder;
  return agentx::Encode({answer, {}, agentx::Response{}});
}
