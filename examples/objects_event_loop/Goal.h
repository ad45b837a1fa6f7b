// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_GOAL_H_
#define SNMPSUBAGENT_EXAMPLES_GOAL_H_

#include <snmpsubagent.h>

#include <iostream>

#include "Loop.h"

namespace snmp = snmpsubagent;

// A service that runs in an event loop. No lock for its variables: all of it
// runs there.
class Goal {
 public:
  Goal(snmp::Agent& agent, Loop& loop)
      : module_(agent, "1.3.6.1.4.1.32473.3.21") {
    goalObject_.Changed(
        [](int value) { std::cout << "the goal is " << value << std::endl; });
    agent.OnSession([](const snmp::SessionEvent& event) {
      std::cout << (event.connected ? "connected" : "not connected")
                << std::endl;
    });
    loop.Watch(agent.Poll(), [&agent] { agent.Dispatch(); });
  }

  // Called by the loop's timer.
  void SecondsHavePassed(int number) { seconds_ += number; }

 private:
  int seconds_ = 0;
  int goal_ = 0;
  snmp::Module module_;
  snmp::Scalar<int> secondsObject_{module_, "1", seconds_};
  snmp::Scalar<int> goalObject_{module_, "2", goal_,
                                snmp::ReadWrite().Range(0, 100)};
};

#endif  // SNMPSUBAGENT_EXAMPLES_GOAL_H_
