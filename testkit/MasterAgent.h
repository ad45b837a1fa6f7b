// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_MASTERAGENT_H_
#define SNMPSUBAGENT_TESTKIT_MASTERAGENT_H_

#include <string>

#include "testkit/Daemon.h"
#include "testkit/LoopbackPort.h"
#include "testkit/Manager.h"

namespace testkit {

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
  int SnmpPort() const { return snmpPort_.Number(); }

  // Where it answers managers, host:port.
  std::string Address() const { return snmpPort_.Address(); }

  // A manager that asks this agent.
  const testkit::Manager& Manager() const { return manager_; }

 private:
  LoopbackPort snmpPort_;
  LoopbackPort agentXPort_;
  Daemon daemon_;
  testkit::Manager manager_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_MASTERAGENT_H_
