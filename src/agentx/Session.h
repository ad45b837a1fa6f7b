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

#include "agentx/Message.h"

namespace snmpsubagent::agentx {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

struct SessionOptions {
  Oid id;                   // of the subagent, or null (RFC 2741, 6.2.1)
  std::string description;  // of the subagent, up to 255 octets
  // How long the master agent is to wait for our responses; whole seconds, up to
  // 255, 0 for the master agent's own default.
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
  // Notifications kept while they can't be sent; beyond it the oldest go.
  std::size_t notificationLimit = 1000;
};

struct Registration {
  Oid subtree;
  std::string context;
  std::uint8_t priority = 127;  // 1 the highest to 255 (RFC 2741, 6.2.3)
  std::chrono::seconds timeout{0};  // 0 for that of the session
};

enum class NotificationOutcome {
  Sent,        // the master agent has taken it
  Refused,     // it answered with an error
  Dropped,     // never sent: too many were waiting, or Stop()
  Unanswered,  // sent, and the session was lost before the response
};

// What a session tells whoever serves it.
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
  // CleanupSet ask for a response, at once or later, see Session::Output() and
  // Session::Send().
  virtual void OnRequest(const Request& request) = 0;
  // `error` is None when the master agent has taken the registration.
  virtual void OnRegistration(std::uint32_t id, Error error) = 0;
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
// Threads: one at a time.
class Session {
 public:
  Session(SessionOptions options, SessionUser& user);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Start(Time now);
  // Closes the session: the Close message is in Output() when it returns.
  void Stop(Time now);

  bool WantsConnection() const;
  bool IsOpen() const;

  // What the driver tells.
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

  // What is to be sent. Responses to a request are written behind it while
  // OnRequest() runs; the driver takes bytes from its front as they are sent.
  std::vector<std::uint8_t>& Output();
  // A whole response written apart, for a request that was answered later.
  // Dropped if the session of that request is gone.
  void Send(const Header& request, const std::vector<std::uint8_t>& response);

  // Registers a subtree now or as soon as there is a session; returns a number
  // for it, which Unregister() withdraws.
  std::uint32_t Register(Registration registration, Time now);
  void Unregister(std::uint32_t id, Time now);
  // What the master agent answered last, None also while it has not.
  // Agent capabilities of the session (sysORTable, RFC 3418).
  void AddAgentCaps(const Oid& id, const std::string& description,
                    const std::string& context, Time now);
  void RemoveAgentCaps(const Oid& id, const std::string& context, Time now);

  // Queues a notification whose varbinds are `payload`, as VarbindWriter makes
  // them. Each is sent once, in order.
  std::uint64_t Notify(std::vector<std::uint8_t> payload,
                       const std::string& context, Time now);

  // The master agent's sysUpTime in hundredths of a second as of `now`, by the
  // last response that carried it; 0 before there was one.
  std::uint32_t SysUpTime(Time now) const;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_SESSION_H_
