// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAKEMASTER_FAULTS_H_
#define SNMPSUBAGENT_TESTS_FAKEMASTER_FAULTS_H_

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/Device.h"
#include "testkit/agentx/MasterSession.h"

// A moment in the life of a session. Reaching it leaves what the subagent asked
// last, if it waits for an answer.
struct Moment {
  // From a connection just made, or from a session that serves everything.
  enum class From { kConnection, kService };
  using Reach = std::function<std::optional<testkit::agentx::Pdu>(
      testkit::agentx::MasterSession&, Device&)>;
  std::string name;
  From from;
  Reach reach;
};

// Every moment at which something is under way, and an idle one.
std::vector<Moment> Moments();

// What a master agent does instead of going on. Where it leaves the connection
// open it says nothing more on it.
using Fault =
    std::function<void(testkit::agentx::MasterSession&,
                       const std::optional<testkit::agentx::Pdu>& asked)>;

// What would come next: the answer to what the subagent asked, or a request.
testkit::agentx::Bytes NextMessage(
    const testkit::agentx::MasterSession& session,
    const std::optional<testkit::agentx::Pdu>& asked);

#endif  // SNMPSUBAGENT_TESTS_FAKEMASTER_FAULTS_H_
