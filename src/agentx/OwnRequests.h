// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_OWNREQUESTS_H_
#define SNMPSUBAGENT_AGENTX_OWNREQUESTS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "agentx/Message.h"

namespace snmpsubagent::agentx {

// A request of the subagent's that waits for its response.
struct OwnRequest {
  PduType type = PduType::Ping;
  std::uint64_t id = 0;  // what it is for: a registration, a notification
  bool inDefaultContext = true;
  std::uint32_t packetId = 0;
  std::chrono::steady_clock::time_point deadline;
  bool isNew = true;  // it has not been sent yet
};

// The requests that wait for their responses. They are few, so that what a
// master agent has before it is answered soon, and that a stopped one is not
// sent more than its socket takes.
class OwnRequests {
 public:
  static constexpr std::size_t kMost = 64;

  OwnRequests() { waiting_.reserve(kMost); }

  bool empty() const { return waiting_.empty(); }
  bool Full() const { return waiting_.size() == kMost; }

  // Requires: not Full(), and a deadline that is not before the others'. Throws
  // nothing.
  void Add(const OwnRequest& request) { waiting_.push_back(request); }
  // Removes and returns the request of this number, if there is one.
  std::optional<OwnRequest> Take(std::uint32_t packetId);
  void Clear() { waiting_.clear(); }

  // Whether some were added since Sent(), which gives them that deadline.
  bool HasNew() const { return !waiting_.empty() && waiting_.back().isNew; }
  void Sent(std::chrono::steady_clock::time_point deadline);

  // When the first response is overdue.
  std::optional<std::chrono::steady_clock::time_point> Deadline() const;

 private:
  std::vector<OwnRequest> waiting_;  // in the order in which they were sent
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_OWNREQUESTS_H_
