// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_STANDINGREQUESTS_H_
#define SNMPSUBAGENT_AGENTX_STANDINGREQUESTS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "agentx/Backoff.h"
#include "agentx/Message.h"

namespace snmpsubagent::agentx {

struct Registration {
  Oid subtree;
  std::string context;
  std::uint8_t priority = 127;      // 1 the highest to 255 (RFC 2741, 6.2.3)
  std::chrono::seconds timeout{0};  // up to 255; 0 for that of the session
};

struct AgentCaps {
  Oid id;
  std::string description;
  std::string context;
};

// A registration that the master agent has refused, and why.
struct RefusedRegistration {
  std::uint32_t id = 0;
  Oid subtree;
  std::string context;
  Error error = Error::None;
};

// What a session is to ask of every master agent that it meets, and how far it
// has come: registrations and agent capabilities. They are asked for in the
// order in which they were added and withdrawn. A refused one is asked for
// again after a growing time, and at once when one of the same region goes.
class StandingRequests {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Content = std::variant<Registration, AgentCaps>;

  StandingRequests(std::chrono::milliseconds firstRetry,
                   std::chrono::milliseconds lastRetry)
      : firstRetry_(firstRetry), lastRetry_(lastRetry) {}

  // Returns its number. Throws std::bad_alloc, and keeps nothing then.
  std::uint32_t Add(Content content);
  // Forgets it, at once or after the master agent has been told.
  void Withdraw(std::uint32_t id);
  // Withdraws agent capabilities by what they are.
  void WithdrawAgentCaps(const Oid& id, const std::string& context);

  // With a session all of them are to be sent, without one none.
  void SessionOpened();
  void SessionEnded();

  // What is to be sent next; nothing if there is nothing, or if it has to wait
  // for a response. `content` stays until the next call of any operation.
  struct Step {
    std::uint32_t id = 0;
    bool withdraws = false;
    const Content* content = nullptr;
  };
  std::optional<Step> Next();
  // That has been written.
  void NextIsWritten();

  // The response to a step that was written. Returns what was asked for; null
  // if it has been withdrawn.
  const Content* Answered(std::uint32_t id, bool withdraws, Error error,
                          Time now);

  // When a refused one is to be asked for again.
  std::optional<Time> NextRetry() const;
  void RetryDue(Time now);

  bool IsTaken(std::uint32_t id) const;
  std::vector<RefusedRegistration> Refused() const;
  std::optional<RefusedRegistration> FindRefused(std::uint32_t id) const;

 private:
  // With a session; without one all are Waiting.
  enum class State { Waiting, Asked, Taken, Refused, Leaving, LeavingAsked };
  struct Entry {
    Content content;
    Backoff retry;
    State state = State::Waiting;
    bool withdrawn = false;  // while it was Asked
    Error error = Error::None;

    bool Leaves() const {
      return withdrawn || state == State::Leaving ||
             state == State::LeavingAsked;
    }
  };
  using Entries = std::map<std::uint32_t, Entry>;

  Entry* Find(std::uint32_t id);
  const Content* Take(std::uint32_t id, Entry& entry);
  const Content* Refuse(std::uint32_t id, Entry& entry, Error error, Time now);
  void Left(Entries::iterator entry);
  bool WaitsForAnother(const Entry& entry) const;

  std::chrono::milliseconds firstRetry_;
  std::chrono::milliseconds lastRetry_;
  Entries entries_;
  std::uint32_t lastId_ = 0;
  bool open_ = false;
  // To be sent; what is not Waiting or Leaving any more is skipped.
  std::deque<std::uint32_t> queue_;
  // Refused ones by their time; what is not Refused any more is skipped.
  std::multimap<Time, std::uint32_t> retries_;
  std::size_t withdrawnWhileAsked_ = 0;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_STANDINGREQUESTS_H_
