// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef EXAMPLESERVICE_H_
#define EXAMPLESERVICE_H_

#include <NetSNMPAgentGuard.h>
#include <NetSNMPNode.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

// Shared by the examples: a subagent, and a loop that works until a signal
// arrives.
class ExampleService : public SNMPSubAgent {
 public:
  // `argv` may name the master agent, host and port; by default it is the one
  // on this device.
  ExampleService(const std::string& name, int argc, char* argv[])
      : SNMPSubAgent(name, argc > 2 ? argv[1] : "127.0.0.1",
                     argc > 2 ? std::atoi(argv[2]) : 705) {}

  void ApplicationOperation() override {}

  // The session has come up, for the first time or again. After
  // ReregisterMibs() managers would see no iterator table.
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }

  // Starts the subagent and calls `work` ten times a second, under a guard, so
  // that no manager sees it half done. On SIGINT and SIGTERM it stops the
  // subagent and deletes the nodes while the subagent still exists.
  template <class Work>
  void Run(const Work& work) {
    // Before the subagent thread starts: it inherits the mask, and only this
    // thread waits for the signals.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    Start();
    const timespec interval = {0, 100000000};
    while (sigtimedwait(&signals, nullptr, &interval) < 0) {
      const NetSNMPAgentGuard guard;
      work();
    }
    while (!Initialized()) std::this_thread::yield();
    Stop();
    NetSNMPNode::DeleteNodeMap();
  }

 private:
  // Stop() must not come before the subagent thread has set up the agent
  // library.
  static bool Initialized() {
    const NetSNMPAgentGuard guard;
    return NetSNMPNode::snmpSubAgent_ != nullptr;
  }
};

#endif  // EXAMPLESERVICE_H_
