// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LONELYSUBAGENT_H_
#define SNMPSUBAGENT_TESTS_LONELYSUBAGENT_H_

#include "SNMPSubAgent.h"
#include "support/AgentLibrarySettings.h"
#include "testkit/LoopbackPort.h"

// A subagent whose master agent is absent: nobody listens on its port.
class LonelySubAgent : public SNMPSubAgent {
 public:
  LonelySubAgent();

  // Stops it.
  ~LonelySubAgent() override;

  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { ++connections_; }

  // Starts it and waits until it is in its loop, which Stop() requires.
  bool StartAndLoop();

  // Waits until its thread has ended by itself. Unlike a look at IsRunning(),
  // which takes mutex_, this does not keep the thread from giving up its
  // handle.
  bool WaitForEnd() const;

  // How often OnSubAgentConnected() was called.
  int Connections() const { return connections_; }

 private:
  support::AgentLibrarySettings settings_;
  testkit::LoopbackPort port_;
  int connections_ = 0;
};

#endif  // SNMPSUBAGENT_TESTS_LONELYSUBAGENT_H_
