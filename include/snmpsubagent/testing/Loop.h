// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_LOOP_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_LOOP_H_

#include <functional>
#include <vector>

#include "snmpsubagent/Agent.h"

namespace snmpsubagent::testing {

// An event loop on the thread of the test. It runs whenever the kit waits
// there: for a response, a registration, a notification, time to pass. So all
// of a service runs on one thread, and only while the test waits.
//
//   snmp::testing::Master master;
//   snmp::Agent agent("thermometer", {master.Address()});
//   snmp::testing::Loop loop(agent);
//   master.WaitForRegistrations(1);
//
// Threads: that which has built it.
class Loop {
 public:
  // Watches nothing yet.
  Loop();
  // Starts the agent with Poll(), and serves it with Dispatch(). It outlives
  // the loop.
  explicit Loop(Agent& agent);
  ~Loop();
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

  void Serve(Agent& agent);
  // Calls the function whenever the descriptor is readable: one of the
  // service's own, such as that of an sd-event loop.
  void Watch(int descriptor, std::function<void()> function);

  // Serves all that is readable; does not wait.
  void RunOnce();

 private:
  struct Watched {
    int descriptor;
    std::function<void()> function;
  };
  std::vector<Watched> watched_;
};

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_LOOP_H_
