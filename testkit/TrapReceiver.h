// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_TRAPRECEIVER_H_
#define SNMPSUBAGENT_TESTKIT_TRAPRECEIVER_H_

#include <cstddef>
#include <string>
#include <vector>

#include "testkit/Daemon.h"
#include "testkit/LoopbackPort.h"

namespace testkit {

// A receiver of notifications: snmptrapd on a loopback port of its own.
class TrapReceiver {
 public:
  TrapReceiver();

  // The line of a master agent's configuration that makes it send here.
  std::string SinkConfiguration() const;

  // What has arrived: a line for each notification of the tests, its variables
  // without MIB names and separated by "; ". The master agent's own are left
  // out.
  std::vector<std::string> Received() const;

  // Waits until `count` notifications have arrived; returns whether they did.
  bool WaitForCount(std::size_t count) const;

 private:
  LoopbackPort port_;
  Daemon daemon_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_TRAPRECEIVER_H_
