// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/WaitFor.h"

#include <thread>

namespace testkit {

bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return condition();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace testkit
