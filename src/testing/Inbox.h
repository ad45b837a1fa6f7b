// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_INBOX_H_
#define SNMPSUBAGENT_TESTING_INBOX_H_

#include <deque>
#include <vector>

#include "snmpsubagent/testing/Response.h"
#include "testing/Monitor.h"

namespace snmpsubagent::testing::internal {

// Notifications that have arrived, until the test takes them.
//
// Threads: any.
class Inbox {
 public:
  // The varbinds as they came: with snmpTrapOID.0, perhaps with sysUpTime.0.
  void Put(const std::vector<Varbind>& varbinds);
  // The oldest; waits for it. Throws TimedOut.
  Notification Next();
  std::vector<Notification> TakeAll();

 private:
  Monitor monitor_;
  std::deque<Notification> arrived_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_INBOX_H_
