// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/NotificationQueue.h"

#include <algorithm>
#include <utility>

namespace snmpsubagent::agentx {

std::uint64_t NotificationQueue::Add(std::vector<std::uint8_t> payload,
                                     std::string context) {
  waiting_.push_back({lastId_ + 1, std::move(context), std::move(payload), 0});
  return ++lastId_;
}

void NotificationQueue::FrontIsWritten(std::uint64_t begin) {
  waiting_.front().begin = begin;
  written_.splice(written_.end(), waiting_, waiting_.begin());
}

void NotificationQueue::ReturnUnsent(std::uint64_t sent) {
  const auto first = std::find_if(
      written_.begin(), written_.end(),
      [&](const QueuedNotification& one) { return one.begin >= sent; });
  waiting_.splice(waiting_.begin(), written_, first, written_.end());
}

NotificationQueue::List NotificationQueue::TakeWritten(std::uint64_t id) {
  List taken;
  const auto found =
      std::find_if(written_.begin(), written_.end(),
                   [&](const QueuedNotification& one) { return one.id == id; });
  if (found != written_.end()) taken.splice(taken.end(), written_, found);
  return taken;
}

NotificationQueue::List NotificationQueue::TakeWritten() {
  List taken;
  taken.swap(written_);
  return taken;
}

NotificationQueue::List NotificationQueue::TakeWaitingBeyond(
    std::size_t limit) {
  List taken;
  while (waiting_.size() > limit) {
    taken.splice(taken.end(), waiting_, waiting_.begin());
  }
  return taken;
}

}  // namespace snmpsubagent::agentx
