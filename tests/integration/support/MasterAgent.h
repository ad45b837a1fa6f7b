// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_MASTERAGENT_H_
#define SNMPSUBAGENT_TESTS_MASTERAGENT_H_

#include <string>

#include "Daemon.h"
#include "LoopbackPort.h"
#include "Manager.h"

namespace support {

// A master agent: snmpd, answering managers and taking AgentX sessions on
// loopback ports of its own, which it keeps when it is started again. It serves
// no objects itself.
class MasterAgent {
 public:
  // Starts the master agent. `configuration` is added to its own.
  explicit MasterAgent(const std::string& configuration = "");

  // Starts it again after End() or Kill().
  void Start();

  // Ends it as the system's service manager does, with SIGTERM.
  void End() { daemon_.End(); }

  // Ends it without giving it a chance to close its sessions in order.
  void Kill() { daemon_.Kill(); }

  // Keeps it from running, its connections open, until Thaw().
  void Freeze() const;
  void Thaw() const;

  int AgentXPort() const { return agentXPort_.Number(); }

  // Where it answers managers, host:port.
  std::string Address() const { return snmpPort_.Address(); }

  // A manager that asks this agent.
  const support::Manager& Manager() const { return manager_; }

 private:
  LoopbackPort snmpPort_;
  LoopbackPort agentXPort_;
  Daemon daemon_;
  support::Manager manager_;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_MASTERAGENT_H_
