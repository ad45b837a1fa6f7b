// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Threads.h"

#include <filesystem>
#include <iterator>
#include <thread>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;
using testkit::WaitFor;

namespace support {
namespace {

// The thread sanitizer starts one of its own together with a program's first,
// which is therefore started and ended before anything is counted.
[[maybe_unused]] const bool firstThreadIsOver = [] {
  std::thread([] {}).join();
  return true;
}();

}  // namespace

std::size_t ThreadCount() {
  const std::filesystem::directory_iterator threads("/proc/self/task");
  return static_cast<std::size_t>(std::distance(begin(threads), end(threads)));
}

bool WaitForThreadCount(std::size_t count) {
  return WaitFor([count] { return ThreadCount() == count; }, Deadlines::Pass());
}

}  // namespace support
