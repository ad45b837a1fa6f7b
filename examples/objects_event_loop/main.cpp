// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent in an event loop of the service's: one epoll_wait() for managers'
// requests, a timer and signals, and no thread beside it.
//
//   objects_event_loop [host port]      where the master agent takes AgentX
//                                       sessions
#include <signal.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "Goal.h"
#include "Loop.h"

int EverySecond() {
  const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
  const itimerspec second = {{1, 0}, {1, 0}};
  timerfd_settime(timer, 0, &second, nullptr);
  return timer;
}

int EndingSignals() {
  sigset_t mask;
  sigemptyset(&mask);
  sigaddset(&mask, SIGINT);
  sigaddset(&mask, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &mask, nullptr);
  return signalfd(-1, &mask, SFD_CLOEXEC);
}

int main(int argc, char* argv[]) {
  Loop loop;
  bool ending = false;
  loop.Watch(EndingSignals(), [&ending] { ending = true; });

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_event_loop", options);
  Goal goal(agent, loop);

  const int timer = EverySecond();
  loop.Watch(timer, [timer, &goal] {
    std::uint64_t passed = 0;
    if (read(timer, &passed, sizeof passed) == sizeof passed) {
      goal.SecondsHavePassed(static_cast<int>(passed));
    }
  });
  while (!ending) loop.RunOnce();
}
