// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/ConnectionReceiver.h"

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;
using testkit::WaitFor;

namespace support {

void ConnectionReceiver::SubAgentStateChanged(int state) {
  const std::lock_guard<std::mutex> lock(mutex_);
  states_.push_back(state);
}

std::vector<int> ConnectionReceiver::States() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return states_;
}

bool ConnectionReceiver::WaitForStates(const std::vector<int>& states) const {
  return WaitFor([&] { return States() == states; }, Deadlines::Session());
}

}  // namespace support
