// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service with its own event loop beside the subagent thread: timer, signals
// and events of the subagent thread all wake one poll().
//
//   event_loop [host port]      where the master agent takes AgentX sessions
#include <ISNMPSubAgentCallback.h>
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <SNMPSubAgent.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("eventloop", host, port) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

// Written on the subagent thread, read in the loop. Never blocks.
const int wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);

void WakeUp() {
  const std::uint64_t one = 1;
  if (write(wakeUp, &one, sizeof one) < 0) std::abort();
}

class Connection : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int state) override {
    up = state == 1;
    WakeUp();
  }
  bool up = false;  // read it under a guard
};

// Reads what has arrived, so that the next poll() waits again.
void Drain(int descriptor) {
  signalfd_siginfo buffer;  // the largest of the three kinds
  while (read(descriptor, &buffer, sizeof buffer) > 0) continue;
}

int EverySecond() {
  const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
  const itimerspec second = {{1, 0}, {1, 0}};
  timerfd_settime(timer, 0, &second, nullptr);
  return timer;
}

int main(int argc, char* argv[]) {
  sigset_t mask;
  sigemptyset(&mask);
  sigaddset(&mask, SIGINT);
  sigaddset(&mask, SIGTERM);
  // Before the subagent thread starts: it inherits the mask, and only the loop
  // gets the signals.
  pthread_sigmask(SIG_BLOCK, &mask, nullptr);

  int seconds = 0;  // managers read it
  int goal = 0;     // managers write it
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 7, 1, 0};
  new NetSNMPDataNode(oid, 11, "loopSeconds",
                      NetSNMPIntNodeData(&seconds, eNodeAccessReadOnly),
                      nullptr, "");
  oid[9] = 2;
  new NetSNMPDataNode(
      oid, 11, "loopGoal", NetSNMPIntNodeData(&goal, eNodeAccessReadWrite),
      [](NetSNMPDataNode*) { WakeUp(); }, "");
  Connection connection;
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705);
  service.RegisterSubAgentCallback("loop", &connection);
  service.Start();

  pollfd events[] = {
      {signalfd(-1, &mask, SFD_CLOEXEC | SFD_NONBLOCK), POLLIN, 0},
      {EverySecond(), POLLIN, 0},
      {wakeUp, POLLIN, 0}};
  bool initialized = false;  // Stop() must not come before that
  bool ending = false;
  while (!ending || !initialized) {
    poll(events, 3, initialized ? -1 : 10);
    for (const pollfd& event : events) {
      if (event.revents != 0) Drain(event.fd);
    }
    ending = ending || events[0].revents != 0;
    const NetSNMPAgentGuard guard;
    initialized = NetSNMPNode::snmpSubAgent_ != nullptr;
    if (events[1].revents != 0) ++seconds;
    if (events[2].revents != 0) {
      std::cout << (connection.up ? "connected" : "not connected")
                << ", the goal is " << goal << std::endl;
    }
  }
  service.Stop();
  NetSNMPNode::DeleteNodeMap();
}
