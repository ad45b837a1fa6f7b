// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_BUSYAPPLICATION_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_BUSYAPPLICATION_H_

#include "Workers.h"

// An application whose threads all use its objects while managers do. What goes
// wrong is thrown as std::runtime_error.
class BusyApplication {
 public:
  virtual ~BusyApplication() = default;

  virtual void Start() = 0;
  // Eight threads.
  virtual void AddApplication(Workers& workers) = 0;
  // While the master agent is away, they get no response.
  virtual void AddManagers(Workers& workers) = 0;
  // Both are for a restart of the master agent: the first is called when it
  // has gone, the second returns when there is a session again.
  virtual void MasterIsGone() = 0;
  virtual void AwaitSession() = 0;
  // When the threads have ended: requires that managers read exactly the
  // objects that exist.
  virtual void RequireServed() = 0;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_BUSYAPPLICATION_H_
