// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_TESTSUBAGENT_H_
#define SNMPSUBAGENT_TESTS_TESTSUBAGENT_H_

#include <atomic>
#include <string>
#include <thread>

#include "SNMPSubAgent.h"
#include "support/AgentLibrarySettings.h"

namespace support {

// Looks for the master agent every second, to be quick after its return.
inline constexpr char kEagerSubAgent[] = "agentXPingInterval 1\n";

// A subagent as an application writes it: whenever the session comes up it
// registers all nodes.
class TestSubAgent : public SNMPSubAgent {
 public:
  // Its master agent is the one at `masterPort` of this machine;
  // `configuration` is the agent library's.
  explicit TestSubAgent(int masterPort,
                        const std::string& configuration = kEagerSubAgent);

  // Stops it.
  ~TestSubAgent() override;

  void ApplicationOperation() override {}
  void OnSubAgentConnected() override;

  // Starts it and waits until its thread has set up the agent library, which
  // Stop() requires. For the first subagent of the process.
  bool StartAndInitialize();

  // Starts it and waits until the session is up.
  bool StartAndConnect();

  // How often the session has come up and all nodes were registered.
  int Connections() const { return connections_; }
  bool WaitForConnections(int count) const;

  // The thread on which the session came up last.
  std::thread::id SessionThread() const { return sessionThread_; }

 private:
  AgentLibrarySettings settings_;
  std::atomic<int> connections_{0};
  std::atomic<std::thread::id> sessionThread_{};
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_TESTSUBAGENT_H_
