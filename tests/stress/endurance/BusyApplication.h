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
  // Eight threads of the application, and some managers. While the master agent
  // is away, those get no response.
  virtual void AddThreads(Workers& workers) = 0;
  // Both are for a restart of the master agent: the first is called while it is
  // away, the second returns when there is a session again.
  virtual void MasterIsGone() = 0;
  virtual void AwaitSession() = 0;
  // When the threads have ended: requires that managers read exactly the
  // objects that exist.
  virtual void RequireServed() = 0;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_BUSYAPPLICATION_H_
