// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_SNMPD_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_SNMPD_H_

#include <memory>
#include <string>

#include "snmpsubagent/testing/Manager.h"

namespace snmpsubagent::testing {

namespace internal {
class SnmpdState;
}

// A real master agent: snmpd of Net-SNMP, and snmptrapd for what it sends, as
// children of the test. Both have free ports of 127.0.0.1, nothing of the
// system's configuration and no privileges, and end with this object or the
// test. Managers ask over UDP with SNMPv2c, community "public".
//
//   snmp::testing::Snmpd snmpd;
//   snmp::Agent agent("thermometer", {snmpd.Address()});
//   Thermometer thermometer(agent);
//   agent.Start();
//   snmpd.WaitUntilServed("1.3.6.1.4.1.32473.2");
//   EXPECT_EQ(snmpd.Get("1.3.6.1.4.1.32473.2.1.0"), 21);
//
// It lives by the clock of the system, whatever a Clock does.
//
// Threads: any; GoDown() and what is below it, one at a time.
class Snmpd : public Manager {
 public:
  // Waits until both serve. Lines of snmpd.conf(5) may be added to its own.
  // Throws std::runtime_error, with what it has logged, if one does not.
  explicit Snmpd(const std::string& configuration = "");
  ~Snmpd() override;

  // For AgentOptions::master: "tcp:127.0.0.1:" and the port.
  std::string Address() const;
  std::string SnmpAddress() override;

  // Ends snmpd; starts it again on the same ports.
  void GoDown();
  void ComeUp();
  // Kills it, so that it closes no connection in order.
  void Kill();
  // Keeps it from running, its connections open; lets it go on.
  void Freeze();
  void Thaw();

 private:
  Response Answer(const Request& request) override;

  std::unique_ptr<internal::SnmpdState> state_;
};

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_SNMPD_H_
