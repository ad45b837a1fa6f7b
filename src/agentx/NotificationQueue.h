// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_NOTIFICATIONQUEUE_H_
#define SNMPSUBAGENT_AGENTX_NOTIFICATIONQUEUE_H_

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "agentx/Message.h"

namespace snmpsubagent::agentx {

enum class NotificationOutcome {
  Sent,        // the master agent has taken it
  Refused,     // it answered with an error
  Dropped,     // never sent: too many were waiting, or Stop()
  Unanswered,  // sent, or in part, and the session ended before the response
};

struct QueuedNotification {
  std::uint64_t id = 0;
  std::string context;
  std::vector<std::uint8_t> payload;  // varbinds
  std::uint64_t begin = 0;            // where in the output it was written
  // Once it has left the queue.
  NotificationOutcome outcome = NotificationOutcome::Sent;
  Error error = Error::None;
};

// Notifications in order: those written into the output that wait for their
// responses, and behind them those that wait to be written. Only Add() takes
// memory, and so only it throws.
class NotificationQueue {
 public:
  using List = std::list<QueuedNotification>;

  // Returns its number.
  std::uint64_t Add(std::vector<std::uint8_t> payload, std::string context);

  std::uint64_t NextId() const { return lastId_ + 1; }

  std::size_t Waiting() const { return waiting_.size(); }
  // The next one to write. Requires: Waiting() > 0.
  const QueuedNotification& Front() const { return waiting_.front(); }
  // The front one has been written, at this place of the output.
  void FrontIsWritten(std::uint64_t begin);
  // The session has gone, and of its output only so many bytes were sent: what
  // began behind them waits again.
  void ReturnUnsent(std::uint64_t sent);

  // Each removes and returns some: the one of this number, those written, the
  // oldest waiting ones beyond so many.
  List TakeWritten(std::uint64_t id);
  List TakeWritten();
  List TakeWaitingBeyond(std::size_t limit);

 private:
  List written_;
  List waiting_;
  std::uint64_t lastId_ = 0;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_NOTIFICATIONQUEUE_H_
