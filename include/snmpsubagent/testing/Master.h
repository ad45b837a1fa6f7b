// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MASTER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MASTER_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/testing/Manager.h"

namespace snmpsubagent::testing {

namespace internal {
class MasterState;
class SnmpServer;
}  // namespace internal

// A subtree that a subagent has registered (RFC 2741, 6.2.3).
struct Registration {
  Oid subtree;
  unsigned priority = 127;
  std::string context;
  std::string agent;  // the description of the subagent
};

// A capability that a subagent has added (RFC 2741, 6.2.14).
struct Capability {
  Oid id;
  std::string description;
};

// A master agent in the process of the test: no snmpd, no port, no file that
// stays. It takes any number of subagents, registers what they ask for, and
// does for a manager's request what snmpd does: it asks the owner of each
// varbind, with search ranges and GETNEXT for GETBULK, and runs a SET over all
// subagents that it concerns, with all phases.
//
//   snmp::testing::Master master;
//   snmp::Agent agent("thermometer", {master.Address()});
//   Thermometer thermometer(agent);
//   agent.Start();
//   master.WaitForRegistrations(1);
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.1.0"), 21);
//
// An agent may run by itself, after Start() or Run(), or be served by a Loop on
// the thread of the test. An OID that nobody has registered is noSuchObject for
// a GET and notWritable for a SET.
//
// Threads: any.
class Master : public Manager {
 public:
  // Listens. Throws std::system_error.
  Master();
  // Ends the sessions.
  ~Master() override;

  // For AgentOptions::master.
  std::string Address() const;

  // Answers there from now on: the command-line tools of Net-SNMP, say.
  std::string SnmpAddress() override;

  // Asks in that context from now on; in the default one for "".
  void SetContext(const std::string& context);

  // What is registered now.
  std::vector<Registration> Registrations() const;
  // Waits until so many subtrees are registered, or more. Throws TimedOut,
  // with those that are.
  void WaitForRegistrations(std::size_t count);
  // Waits until no subagent is connected. Throws TimedOut.
  void WaitUntilAlone();

  std::vector<Capability> Capabilities() const;

  // Goes away, with all sessions, as when snmpd ends; comes back under the same
  // address, its sysUpTime beginning anew.
  void GoDown();
  void ComeUp();
  // Breaks the connections and takes new ones.
  void Disconnect();

 private:
  Response Answer(const Request& request) override;

  std::unique_ptr<internal::MasterState> state_;
  std::unique_ptr<internal::SnmpServer> server_;
};

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MASTER_H_
