// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An agent in an event loop of the service's: one epoll_wait() for managers'
// requests, a timer and signals, and no thread beside it.
//
//   objects_event_loop [host port]      where the master agent takes AgentX
//                                       sessions
#include <signal.h>
#include <snmpsubagent.h>
#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <iostream>
#include <string>

namespace snmp = snmpsubagent;

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

void Watch(int loop, int descriptor) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor;
  epoll_ctl(loop, EPOLL_CTL_ADD, descriptor, &event);
}

int main(int argc, char* argv[]) {
  const int signals = EndingSignals();
  const int timer = EverySecond();

  // No lock for them: all of it runs in the loop.
  int seconds = 0;
  int goal = 0;

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_event_loop", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.21");
  snmp::Scalar loopSeconds(module, "1", seconds);
  snmp::Scalar loopGoal(module, "2", goal, snmp::ReadWrite().Range(0, 100));
  loopGoal.Changed(
      [](int value) { std::cout << "the goal is " << value << std::endl; });
  agent.OnSession([](const snmp::SessionEvent& event) {
    std::cout << (event.connected ? "connected" : "not connected") << std::endl;
  });

  const int loop = epoll_create1(EPOLL_CLOEXEC);
  const int requests = agent.Poll();
  for (const int descriptor : {signals, timer, requests}) {
    Watch(loop, descriptor);
  }
  for (bool ending = false; !ending;) {
    epoll_event event{};
    if (epoll_wait(loop, &event, 1, -1) < 1) continue;
    ending = event.data.fd == signals;
    if (event.data.fd == requests) agent.Dispatch();
    if (event.data.fd == timer) {
      std::uint64_t passed = 0;
      if (read(timer, &passed, sizeof passed) == sizeof passed) {
        seconds += static_cast<int>(passed);
      }
    }
  }
}
