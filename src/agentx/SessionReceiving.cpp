// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a session does with what the master agent sends (RFC 2741, 7.2.2).
#include "agentx/ResponseWriter.h"
#include "agentx/Session.h"

namespace snmpsubagent::agentx {
namespace {

// What a master agent has asked for and not taken is bounded: one that only
// writes is not served for ever.
constexpr std::size_t kMaxOutput = 64 * 1024 * 1024;

}  // namespace

bool Session::Receive(const std::uint8_t* bytes, std::size_t size, Time now) {
  if (!HasConnection()) return false;
  lastHeard_ = now;
  Guarded(now, [&] {
    input_.Add(bytes, size);
    while (HasConnection()) {
      const std::optional<Message> message = input_.Next();
      if (!message) break;
      Handle(*message, now);
    }
    if (HasConnection() && input_.Broken()) EndBroken(now);
  });
  return HasConnection();
}

// What was written before goes out with the Close, and so counts as sent.
void Session::EndBroken(Time now) {
  const bool wasOpen = state_ == State::Open;
  if (wasOpen) WriteClose(CloseReason::ParseError);
  const char* const reason = "the master agent sent what is no AgentX message";
  if (wasOpen) {
    EndKeepingOutput(now, reason);
  } else {
    End(now, reason);
  }
}

void Session::Handle(const Message& message, Time now) {
  switch (message.header.type) {
    case PduType::Response:
      return HandleResponse(message, now);
    case PduType::Close:
      return HandleClose(message, now);
    default:
      return HandleRequest(message, now);
  }
}

bool Session::IsOfThisSession(const Header& header) const {
  return state_ == State::Open && header.sessionId == sessionId_;
}

void Session::HandleRequest(const Message& message, Time now) {
  if (output_.size() > kMaxOutput) {
    return End(now, "the master agent does not take what it has asked for");
  }
  Header header = message.header;
  header.generation = generation_;
  const Request* const request =
      decoder_.DecodeRequest(header, message.payload);
  if (!request) return Refuse(header, Error::ParseError);
  if (!IsOfThisSession(header)) return Refuse(header, Error::NotOpen);
  retry_.Reset();
  response_.clear();
  user_.OnRequest(*request, response_);
  Send(header, response_, now);
}

// Nothing answers a CleanupSet, whatever is wrong with it (RFC 2741, 7.2.4.4).
void Session::Refuse(const Header& request, Error error) {
  if (request.type == PduType::CleanupSet) return;
  ResponseWriter response(output_.Bytes(), request);
  response.Refuse(error, 0);
  response.Finish();
}

void Session::HandleClose(const Message& message, Time now) {
  const std::optional<CloseReason> reason =
      decoder_.DecodeClose(message.header, message.payload);
  if (!reason) return Refuse(message.header, Error::ParseError);
  if (!IsOfThisSession(message.header)) {
    return Refuse(message.header, Error::NotOpen);
  }
  End(now, "the master agent closed it: " + ToString(*reason));
}

void Session::HandleResponse(const Message& message, Time now) {
  const std::optional<Response> response =
      decoder_.DecodeResponse(message.header, message.payload);
  if (!response) return;
  const std::optional<OwnRequest> request =
      outstanding_.Take(message.header.packetId);
  if (!request) return;
  if (response->error == Error::None && request->inDefaultContext) {
    upTime_.Set(response->sysUpTime, now);
  }
  if (request->type == PduType::Open) {
    HandleOpened(message.header.sessionId, response->error, now);
  } else {
    HandleAnswer(*request, response->error, now);
  }
  SendWhatFits(now);
}

void Session::HandleOpened(std::uint32_t sessionId, Error error, Time now) {
  if (error != Error::None) {
    return End(now, "the master agent refused it: " + ToString(error));
  }
  standing_.SessionOpened();  // without memory it is not open
  state_ = State::Open;
  sessionId_ = sessionId;
  user_.OnOpened();
}

// A session that goes on beyond its Open is one that works: should it be lost,
// the next attempt is made soon.
void Session::HandleAnswer(const OwnRequest& request, Error error, Time now) {
  if (error != Error::NotOpen) retry_.Reset();
  if (request.type == PduType::Notify) {
    ToTell(notifications_.TakeWritten(request.id),
           error == Error::None ? NotificationOutcome::Sent
                                : NotificationOutcome::Refused,
           error);
    TellOutcomes();
  } else if (request.type != PduType::Ping && error != Error::NotOpen) {
    TellStanding(request, error, now);
  }
  if (state_ == State::Open && error == Error::NotOpen) {
    End(now, "the master agent does not know it any more");
  }
}

void Session::TellStanding(const OwnRequest& request, Error error, Time now) {
  const auto id = static_cast<std::uint32_t>(request.id);
  const bool withdraws = request.type == PduType::Unregister ||
                         request.type == PduType::RemoveAgentCaps;
  const StandingRequests::Content* const content =
      standing_.Answered(id, withdraws, error, now);
  if (!content) return;
  if (const auto* const caps = std::get_if<AgentCaps>(content)) {
    const Oid capsId = caps->id;
    user_.OnAgentCaps(capsId, error);
  } else {
    user_.OnRegistration(id, error);
  }
}

}  // namespace snmpsubagent::agentx
