// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAKEMASTER_MASTER_H_
#define SNMPSUBAGENT_TESTS_FAKEMASTER_MASTER_H_

#include <memory>
#include <vector>

#include "agentx/Listener.h"
#include "agentx/MasterSession.h"
#include "integration/support/LoopbackPort.h"

// A master agent of our own, on a loopback port that it keeps.
//
// Threads: one.
class Master {
 public:
  using Session = std::unique_ptr<agentx::MasterSession>;

  Master() { Listen(); }

  int Port() const { return port_.Number(); }

  // Takes connections; refuses them.
  void Listen();
  void Refuse() { listener_.reset(); }

  // The next connection, on which nothing was exchanged yet. Each session has
  // an id of its own.
  Session Accept();

  // The next session on which `subtrees` are registered. Those that the
  // subagent gives up before are passed over.
  Session AcceptServing(std::size_t subtrees);

 private:
  support::LoopbackPort port_;
  std::unique_ptr<agentx::Listener> listener_;
  std::uint32_t lastId_ = 0;
};

// All objects below these subtrees, asked for one after the other.
std::vector<agentx::Varbind> Walk(agentx::MasterSession& session,
                                  const std::vector<agentx::Oid>& subtrees);

#endif  // SNMPSUBAGENT_TESTS_FAKEMASTER_MASTER_H_
