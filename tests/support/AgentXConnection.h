// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_AGENTXCONNECTION_H_
#define SNMPSUBAGENT_TESTS_AGENTXCONNECTION_H_

namespace support {

// The TCP connection of this process to its master agent, seen from below the
// agent library, to bring it into states that are otherwise a matter of luck.
class AgentXConnection {
 public:
  // Finds the connection to that port of this machine. Throws
  // std::runtime_error if there is none.
  explicit AgentXConnection(int masterPort);

  // The descriptor that the agent library uses.
  int Descriptor() const { return descriptor_; }

  // After the master agent has gone: waits until the system knows so for both
  // directions, so that the next write fails with EPIPE.
  bool WaitUntilBroken() const;

 private:
  int descriptor_;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_AGENTXCONNECTION_H_
