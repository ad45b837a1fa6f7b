// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_MASTER_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_MASTER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "testkit/LoopbackPort.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

// A master agent played by a program, on a loopback port that it keeps.
//
// Threads: one.
class Master {
 public:
  using Session = std::unique_ptr<MasterSession>;

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
  LoopbackPort port_;
  std::unique_ptr<Listener> listener_;
  std::uint32_t lastId_ = 0;
};

// All objects below these subtrees, asked for one after the other.
std::vector<Varbind> Walk(MasterSession& session,
                          const std::vector<Oid>& subtrees);

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_MASTER_H_
