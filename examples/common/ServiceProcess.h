// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SERVICEPROCESS_H_
#define SERVICEPROCESS_H_

#include <signal.h>
#include <snmpsubagent.h>

#include <ctime>
#include <string>

// Shared by the examples of the objects: what each is as a process.

// The signals that end it, SIGINT and SIGTERM. To be built before there is
// another thread, so that only this one gets them.
class EndSignals {
 public:
  EndSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGINT);
    sigaddset(&signals_, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  }

  void Wait() const {
    int signal = 0;
    sigwait(&signals_, &signal);
  }

  // Returns whether one has come within a second.
  bool WaitASecond() const {
    const timespec second = {1, 0};
    return sigtimedwait(&signals_, nullptr, &second) > 0;
  }

 private:
  sigset_t signals_;
};

// `argv` may name the host and port where the master agent takes AgentX
// sessions; by default it is the one on this device.
inline snmpsubagent::AgentOptions OptionsFrom(int argc, char* argv[]) {
  snmpsubagent::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  return options;
}

#endif  // SERVICEPROCESS_H_
