// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_SESSION_H_
#define SNMPSUBAGENT_AGENTX_SESSION_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agentx/Backoff.h"
#include "agentx/Decoder.h"
#include "agentx/MasterClock.h"
#include "agentx/Message.h"
#include "agentx/MessageStream.h"
#include "agentx/NotificationQueue.h"
#include "agentx/Output.h"
#include "agentx/OwnRequests.h"
#include "agentx/StandingRequests.h"

namespace snmpsubagent::agentx {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

struct SessionOptions {
  Oid id;                   // of the subagent, or null (RFC 2741, 6.2.1)
  std::string description;  // of the subagent, up to 255 octets
  // How long the master agent is to wait for our responses; whole seconds, up
  // to 255, 0 for the master agent's own default.
  std::chrono::seconds timeout{5};
  // How long we wait for its responses before the session counts as lost.
  std::chrono::milliseconds responseTimeout{10000};
  // An idle session is pinged so often; 0 for never.
  std::chrono::milliseconds pingInterval{15000};
  // The time from a loss or a failed attempt to the next attempt: the first,
  // which doubles with each failure, and the longest.
  std::chrono::milliseconds firstRetry{100};
  std::chrono::milliseconds lastRetry{15000};
  // The same for a registration that the master agent has refused.
  std::chrono::milliseconds firstRegistrationRetry{1000};
  std::chrono::milliseconds lastRegistrationRetry{60000};
  // Notifications kept while there is no session; beyond it the oldest go.
  std::size_t notificationLimit = 1000;
};

// What a session tells whoever serves it. From each of these all of the session
// may be called but what the driver tells it and Advance(). OnRequest() may
// throw std::bad_alloc, which ends the session; else nothing is to be thrown.
class SessionUser {
 public:
  virtual ~SessionUser() = default;
  // The session has come up; registrations are under way.
  virtual void OnOpened() = 0;
  // It was up and is no longer. What a SET has staged is to be undone.
  virtual void OnEnded(std::string_view reason) = 0;
  // An attempt to connect or open has failed.
  virtual void OnAttemptFailed(std::string_view reason) = 0;
  // Get, GetNext, GetBulk, TestSet, CommitSet, UndoSet or CleanupSet. All but
  // CleanupSet ask for a response: at once, written into `response`, which is
  // empty, or later with Session::Send().
  virtual void OnRequest(const Request& request,
                         std::vector<std::uint8_t>& response) = 0;
  // `error` is None when the master agent has taken the registration. Not told
  // for one that has been withdrawn.
  virtual void OnRegistration(std::uint32_t id, Error error) = 0;
  // The same for agent capabilities.
  virtual void OnAgentCaps(const Oid& /*id*/, Error /*error*/) {}
  // Told once for each notification, at the earliest while Notify() runs.
  virtual void OnNotification(std::uint64_t id, NotificationOutcome outcome,
                              Error error) = 0;
};

// The subagent's end of an AgentX session (RFC 2741, section 7), as a state
// machine over bytes and a clock: it has no socket and no thread, and never
// waits. Whoever drives it connects when WantsConnection() says so, hands it
// what arrives, sends what Output() holds, and calls Advance() when
// NextDeadline() has come.
//
//   state         WantsConnection   what goes on
//   stopped       no                nothing; registrations are kept
//   waiting       no                the time to the next attempt runs
//   connecting    yes               the driver connects
//   opening       no                Open has been sent
//   open          no                requests, registrations, notifications
//
// It keeps what is to be registered, and registers it anew with each session.
// Requests of our own that wait for a response are limited in number, so that a
// master agent which is asked for thousands goes on serving its managers.
//
// No bytes make it throw. Memory that is short ends the session, as a lost
// connection does; operations that keep something new, which are Register(),
// AddAgentCaps() and Notify(), throw std::bad_alloc and keep nothing.
//
// Threads: one at a time.
class Session {
 public:
  // `user` is borrowed. Notifications that wait when it is destroyed have no
  // outcome; Stop() gives them one.
  Session(SessionOptions options, SessionUser& user);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Start(Time now);
  // Closes the session: the Close message is in Output() when it returns,
  // behind what was not sent yet. Notifications get their outcome: those that
  // were written into Output() are Unanswered, the others Dropped.
  void Stop(Time now);

  bool WantsConnection() const;
  // Whether there is one, from Connected() to the end of the session.
  bool HasConnection() const {
    return state_ == State::Opening || state_ == State::Open;
  }
  bool IsOpen() const;

  // What the driver tells. What is left in Output() of an earlier connection
  // goes with Connected().
  void Connected(Time now);
  void ConnectFailed(Time now, std::string_view reason);
  // The connection broke or was closed by the master agent.
  void Disconnected(Time now, std::string_view reason);
  // Bytes as they arrive, in pieces of any size. Returns false when the
  // connection is to be closed: the session has ended, and Output() may hold a
  // last message.
  bool Receive(const std::uint8_t* bytes, std::size_t size, Time now);

  // When Advance() is to be called, or nothing to wait for. It may come earlier
  // than needed, never later.
  std::optional<Time> NextDeadline() const;
  // Returns false when the connection is to be closed, as Receive() does.
  bool Advance(Time now);

  // What is to be sent; the driver takes bytes from its front. It changes with
  // every operation of this class, and so does NextDeadline().
  agentx::Output& Output() { return output_; }
  // Whether there are requests in it since Sent(), which the driver calls when
  // it has sent of it what goes: their time runs from then on, not from when a
  // function of the user's, which may have taken its time, had them written.
  bool HasNewRequests() const { return outstanding_.HasNew(); }
  void Sent(Time now) { outstanding_.Sent(now + options_.responseTimeout); }
  // A whole response written apart, for a request that was answered later.
  // Dropped if the session of that request is gone.
  void Send(const Header& request, const std::vector<std::uint8_t>& response,
            Time now);

  // Registers a subtree now or as soon as there is a session; returns a number
  // for it, which Unregister() withdraws.
  std::uint32_t Register(Registration registration, Time now);
  void Unregister(std::uint32_t id, Time now);
  // Whether the master agent has taken it, in the session that there is now.
  bool IsRegistered(std::uint32_t id) const;
  // Those that it has refused and not taken since, in that session; the one of
  // this number, if it is among them.
  std::vector<RefusedRegistration> RefusedRegistrations() const;
  std::optional<RefusedRegistration> FindRefused(std::uint32_t id) const;

  // Agent capabilities of the session (sysORTable, RFC 3418).
  void AddAgentCaps(const Oid& id, const std::string& description,
                    const std::string& context, Time now);
  void RemoveAgentCaps(const Oid& id, const std::string& context, Time now);

  // Queues a notification whose varbinds are `payload`, as VarbindWriter makes
  // them. Each is sent once, in order. What has not begun to be sent when the
  // session is lost is sent in the next one. Of too many that wait the oldest
  // are dropped, here and when an attempt fails; but not while OnNotification()
  // runs, which may queue again what was dropped.
  std::uint64_t Notify(std::vector<std::uint8_t> payload,
                       const std::string& context, Time now);
  // The number that the next one will have.
  std::uint64_t NextNotification() const { return notifications_.NextId(); }

  // The master agent's sysUpTime in hundredths of a second as of `now`, by the
  // last response that carried it; 0 before there was one.
  std::uint32_t SysUpTime(Time now) const;

  // Notifications that have not been written into Output() yet, and how many
  // were dropped since the beginning.
  std::size_t WaitingNotifications() const { return notifications_.Waiting(); }
  std::uint64_t DroppedNotifications() const { return dropped_; }

 private:
  enum class State { Stopped, Waiting, Connecting, Opening, Open };
  using NotificationList = NotificationQueue::List;

  bool IsOfThisSession(const Header& header) const;

  // Runs `step`; memory that is short ends the session.
  template <typename Step>
  void Guarded(Time now, const Step& step) {
    try {
      step();
    } catch (const std::bad_alloc&) {
      if (HasConnection()) End(now, "there is no memory for it");
    }
  }

  void Handle(const Message& message, Time now);
  void HandleRequest(const Message& message, Time now);
  void HandleClose(const Message& message, Time now);
  void HandleResponse(const Message& message, Time now);
  void HandleOpened(std::uint32_t sessionId, Error error, Time now);
  void HandleAnswer(const OwnRequest& request, Error error, Time now);
  void TellStanding(const OwnRequest& request, Error error, Time now);
  void Refuse(const Header& request, Error error);

  // Writes a request of ours with `write`, and expects its response.
  template <typename Write>
  void Ask(PduType type, std::uint64_t id, bool inDefaultContext, Time now,
           const Write& write) {
    const Header header = NextHeader();
    write(header);
    outstanding_.Add({type, id, inDefaultContext, header.packetId,
                      now + options_.responseTimeout});
  }
  Header NextHeader();
  void SendWhatFits(Time now);
  bool SendStanding(Time now);
  bool SendNotification(Time now);
  void SendPingIfDue(Time now);
  std::optional<Time> PingTime() const;

  // What was not sent yet is not sent any more.
  void End(Time now, std::string_view reason);
  // What was not sent yet, still is.
  void EndKeepingOutput(Time now, std::string_view reason);
  void EndUnanswered(Time now);
  void EndBroken(Time now);
  void WriteClose(CloseReason reason);
  void Leave(State state);
  void ToTell(NotificationList notifications, NotificationOutcome outcome,
              Error error = Error::None);
  void TellOutcomes();

  SessionOptions options_;
  SessionUser& user_;
  State state_ = State::Stopped;
  Backoff retry_;
  Time nextAttempt_;
  Time lastHeard_;
  std::uint32_t generation_ = 0;
  std::uint32_t sessionId_ = 0;
  std::uint32_t lastPacketId_ = 0;
  MasterClock upTime_;
  MessageStream input_;
  Decoder decoder_;
  std::vector<std::uint8_t> response_;
  agentx::Output output_;
  OwnRequests outstanding_;
  StandingRequests standing_;
  NotificationQueue notifications_;
  NotificationList untold_;  // whose outcome is known
  bool telling_ = false;     // what came of notifications
  std::uint64_t dropped_ = 0;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_SESSION_H_
