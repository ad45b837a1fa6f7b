// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/OwnRequests.h"

#include <algorithm>

namespace snmpsubagent::agentx {

std::optional<OwnRequest> OwnRequests::Take(std::uint32_t packetId) {
  const auto found = std::find_if(
      waiting_.begin(), waiting_.end(),
      [&](const OwnRequest& request) { return request.packetId == packetId; });
  if (found == waiting_.end()) return {};
  const OwnRequest request = *found;
  waiting_.erase(found);
  return request;
}

void OwnRequests::Sent(std::chrono::steady_clock::time_point deadline) {
  for (auto request = waiting_.rbegin();
       request != waiting_.rend() && request->isNew; ++request) {
    request->isNew = false;
    request->deadline = deadline;
  }
}

std::optional<std::chrono::steady_clock::time_point> OwnRequests::Deadline()
    const {
  if (waiting_.empty()) return {};
  return waiting_.front().deadline;
}

}  // namespace snmpsubagent::agentx
