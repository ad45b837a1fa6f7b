// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "VirtualTime.h"

#include <sys/select.h>
#include <sys/time.h>

#include "Input.h"
#include "NetSNMP.h"

namespace {

void (*theWork)() = nullptr;
timeval theTime = {1000000, 0};

// What a select() takes that need not wait.
constexpr timeval kMoment = {0, 10000};

void Pass(const timeval& time) { timeradd(&theTime, &time, &theTime); }

}  // namespace

void VirtualTime::WorkInSelect(void (*work)()) { theWork = work; }

// These take the place of the system's select() and of the agent library's
// clock in the whole program, its shared libraries included.
extern "C" {

[[gnu::visibility("default")]] void netsnmp_get_monotonic_clock(timeval* now) {
  *now = theTime;
}

[[gnu::visibility("default")]] int select(int count, fd_set* readable,
                                          fd_set* writable, fd_set* failed,
                                          timeval* timeout) {
  if (theWork != nullptr) theWork();
  // The agent library polls without a pause while it waits for a response and
  // an alarm is due.
  Pass(kMoment);
  const timespec atOnce{0, 0};
  const int result =
      pselect(count, readable, writable, failed, &atOnce, nullptr);
  if (result != 0) return result;
  Require(timeout != nullptr, "waits without a limit");
  Pass(*timeout);
  return 0;
}

}  // extern "C"
