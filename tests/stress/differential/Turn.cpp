// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Turn.h"

#include <algorithm>

namespace agentx = testkit::agentx;

namespace {

using testkit::agentx::Oid;
using testkit::agentx::SearchRange;
using testkit::agentx::Varbind;

// Inserts the way after the root, if `oid` begins with it.
void Turn(Oid& oid, Way way) {
  static const Oid kRoot{1, 3, 6, 1, 4, 1, 32473};
  if (oid.size() > kRoot.size() &&
      std::equal(kRoot.begin(), kRoot.end(), oid.begin())) {
    oid[kRoot.size()] = static_cast<std::uint32_t>(way);
  }
}

void Turn(std::vector<SearchRange>& ranges, Way way) {
  for (SearchRange& range : ranges) {
    Turn(range.start, way);
    Turn(range.end, way);
  }
}

void Turn(std::vector<Varbind>& varbinds, Way way) {
  for (Varbind& varbind : varbinds) {
    Turn(varbind.name, way);
    if (auto* oid = std::get_if<Oid>(&varbind.value.content)) Turn(*oid, way);
  }
}

void Turn(agentx::Get& get, Way way) { Turn(get.ranges, way); }
void Turn(agentx::GetNext& getNext, Way way) { Turn(getNext.ranges, way); }
void Turn(agentx::GetBulk& getBulk, Way way) { Turn(getBulk.ranges, way); }
void Turn(agentx::TestSet& set, Way way) { Turn(set.varbinds, way); }
template <typename Other>
void Turn(Other&, Way) {}

}  // namespace

agentx::Body Turned(agentx::Body request, Way way) {
  std::visit([&](auto& body) { Turn(body, way); }, request);
  return request;
}

agentx::Response Normalised(agentx::Response response) {
  Turn(response.varbinds, Way::kPlain);
  response.sysUpTime = 0;
  return response;
}

agentx::Notify Normalised(agentx::Notify notification) {
  static const Oid kSysUpTime{1, 3, 6, 1, 2, 1, 1, 3, 0};
  Turn(notification.varbinds, Way::kPlain);
  for (Varbind& varbind : notification.varbinds) {
    if (varbind.name == kSysUpTime) varbind.value = {};
  }
  return notification;
}
