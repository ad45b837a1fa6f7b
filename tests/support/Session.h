// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SESSION_H_
#define SNMPSUBAGENT_TESTS_SESSION_H_

#include <string>
#include <vector>

#include "support/ConnectionReceiver.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testkit/Manager.h"
#include "testkit/MasterAgent.h"

namespace support {

// A subagent with its registry of nodes, a receiver, and the master agent that
// it is to connect to: what most tests start from.
class Session {
 public:
  explicit Session(const std::string& configuration = kEagerSubAgent);

  // Ends as an application does: stops the subagent, deletes the nodes, then
  // destroys the subagent.
  ~Session();

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Starts the subagent and waits until it is connected; throws
  // std::runtime_error if it does not come to be.
  void Connect();

  // Sets objects as Manager::Set() does and waits until the subagent has done
  // so: the master agent answers a manager when every subagent has agreed, not
  // when it has written. Requests that follow are served after the SET.
  testkit::CommandResult Set(const std::vector<std::string>& bindings) const;

  testkit::MasterAgent& Master() { return master_; }
  const testkit::Manager& Manager() const { return master_.Manager(); }
  TestSubAgent& SubAgent() { return subAgent_; }
  const ConnectionReceiver& Receiver() const { return receiver_; }

 private:
  testkit::MasterAgent master_;
  ConnectionReceiver receiver_;
  TestSubAgent subAgent_;
  NodeRegistry registry_;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_SESSION_H_
