// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_DEADLINES_H_
#define SNMPSUBAGENT_TESTKIT_DEADLINES_H_

#include <chrono>

namespace testkit {

// How long the tests wait for what must happen, all in one place. A deadline
// only bounds a failing test: a passing one continues as soon as it can. All
// are longer under sanitizers and valgrind.
class Deadlines {
 public:
  // For one of the command-line tools to answer.
  static std::chrono::milliseconds Command();

  // For a daemon to serve after its start, and to end after SIGTERM.
  static std::chrono::milliseconds Daemon();

  // For the AgentX session to come up or to be found lost.
  static std::chrono::milliseconds Session();

  // For SNMPSubAgent::Stop(): the longest wait of the event loop, and some.
  static std::chrono::milliseconds Stop();

  // For many requests of several managers at once.
  static std::chrono::milliseconds Load();

  // For something that needs no more than a pass of the event loop.
  static std::chrono::milliseconds Pass();
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_DEADLINES_H_
