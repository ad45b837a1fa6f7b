// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_

#include <snmpsubagent.h>

#include <chrono>
#include <cstdint>
#include <optional>

#include "support/StandingTime.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

// An agent that runs on the thread of the test, and its master agent beside it:
// what is sent has been served when Send() returns. Its time stands still
// except where it is said to pass, however long the test takes.
class ServedAgent {
 public:
  // How long the master agent waits for a response.
  static constexpr std::chrono::seconds kTimeout{20};
  // How long a function may take that answers later.
  static constexpr std::chrono::milliseconds kAnswerTime{19500};
  // From the loss of a session to the next one.
  static constexpr std::chrono::milliseconds kRetry{1};

  ServedAgent();
  ~ServedAgent() { Lose(); }

  // Takes the next session, with one registration; one that follows another
  // after kRetry.
  void Connect();
  // Ends the connection as a failure does.
  void Lose();

  // A request of a transaction; its packet id.
  std::uint32_t Send(const testkit::agentx::Body& request,
                     std::uint32_t transaction);
  // The next response, which has been sent already.
  testkit::agentx::Pdu Receive() { return session_->Receive(); }
  testkit::agentx::Response Ask(const testkit::agentx::Body& request);

  // Lets time pass, and has done what is due then.
  void Pass(std::chrono::milliseconds time);

 private:
  void Dispatch();

  StandingTime time_;
  std::optional<testkit::agentx::MasterSession> session_;
  int descriptor_ = -1;
  bool running_ = false;

 public:
  snmpsubagent::Agent agent;
};

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_SERVEDAGENT_H_
