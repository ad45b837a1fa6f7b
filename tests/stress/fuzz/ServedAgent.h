// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_

#include <snmpsubagent.h>

#include <cstdint>
#include <optional>

#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

// An agent that runs on the thread of the test, and its master agent beside it:
// what is sent has been served when Send() returns.
class ServedAgent {
 public:
  ServedAgent();
  ~ServedAgent() { Lose(); }

  // Takes the next session, with one registration.
  void Connect();
  // Ends the connection as a failure does.
  void Lose();

  // A request of a transaction; its packet id.
  std::uint32_t Send(const testkit::agentx::Body& request,
                     std::uint32_t transaction);
  // The next response, which has been sent already.
  testkit::agentx::Pdu Receive() { return session_->Receive(); }
  testkit::agentx::Response Ask(const testkit::agentx::Body& request);

 private:
  void Dispatch();

  std::optional<testkit::agentx::MasterSession> session_;
  int descriptor_ = -1;
  bool running_ = false;

 public:
  snmpsubagent::Agent agent;
};

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_
