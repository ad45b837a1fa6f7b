// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a session sends of its own accord.
#include "agentx/OwnMessages.h"
#include "agentx/Session.h"

namespace snmpsubagent::agentx {
namespace {

bool InDefaultContext(const StandingRequests::Content& content) {
  return std::visit([](const auto& one) { return one.context.empty(); },
                    content);
}

PduType TypeOf(const StandingRequests::Step& step) {
  if (std::holds_alternative<Registration>(*step.content)) {
    return step.withdraws ? PduType::Unregister : PduType::Register;
  }
  return step.withdraws ? PduType::RemoveAgentCaps : PduType::AddAgentCaps;
}

void Write(std::vector<std::uint8_t>& out, const Header& header, PduType type,
           const StandingRequests::Content& content) {
  switch (type) {
    case PduType::Register:
      return WriteRegister(out, header, std::get<Registration>(content));
    case PduType::Unregister:
      return WriteUnregister(out, header, std::get<Registration>(content));
    case PduType::AddAgentCaps:
      return WriteAddAgentCaps(out, header, std::get<AgentCaps>(content));
    default:
      return WriteRemoveAgentCaps(out, header, std::get<AgentCaps>(content));
  }
}

}  // namespace

// The ids of the next request. The transactionId has no meaning in it, but must
// be something.
Header Session::NextHeader() {
  Header header;
  header.sessionId = sessionId_;
  header.packetId = ++lastPacketId_;
  header.transactionId = header.packetId;
  return header;
}

void Session::SendWhatFits(Time now) {
  Guarded(now, [&] {
    while (state_ == State::Open && !outstanding_.Full()) {
      if (!SendStanding(now) && !SendNotification(now)) return;
    }
  });
}

bool Session::SendStanding(Time now) {
  const std::optional<StandingRequests::Step> step = standing_.Next();
  if (!step) return false;
  const PduType type = TypeOf(*step);
  Ask(type, step->id, InDefaultContext(*step->content), now,
      [&](const Header& header) {
        Write(output_.Bytes(), header, type, *step->content);
      });
  standing_.NextIsWritten();
  return true;
}

bool Session::SendNotification(Time now) {
  if (notifications_.Waiting() == 0) return false;
  const QueuedNotification& next = notifications_.Front();
  const std::uint64_t begin = output_.End();
  Ask(PduType::Notify, next.id, next.context.empty(), now,
      [&](const Header& header) {
        WriteNotify(output_.Bytes(), header, next.context, next.payload);
      });
  notifications_.FrontIsWritten(begin);
  return true;
}

// While a response is awaited there is no need: it, or its absence, tells.
std::optional<Time> Session::PingTime() const {
  if (options_.pingInterval.count() <= 0 || !outstanding_.empty()) return {};
  return lastHeard_ + options_.pingInterval;
}

void Session::SendPingIfDue(Time now) {
  const std::optional<Time> time = PingTime();
  if (!time || *time > now) return;
  Ask(PduType::Ping, 0, true, now,
      [&](const Header& header) { WritePing(output_.Bytes(), header); });
}

}  // namespace snmpsubagent::agentx
