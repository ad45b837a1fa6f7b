// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_WAITSET_H_
#define SNMPSUBAGENT_RUNTIME_WAITSET_H_

#include <sys/select.h>

#include "NetSNMP.h"

// What one pass of the event loop waits for.
//
// An fd_set has room for the descriptors below FD_SETSIZE, 1,024; to put in
// another one overwrites the stack. An application with that many open files
// gets Net-SNMP's large set instead.
class WaitSet {
 public:
  // Waits no longer than this, whatever the agent library says.
  explicit WaitSet(const timeval& longestWait) : timeout_(longestWait) {
    FD_ZERO(&descriptors_);
  }
  ~WaitSet();
  WaitSet(const WaitSet&) = delete;
  WaitSet& operator=(const WaitSet&) = delete;

  // Adds the descriptors of the agent library, and waits no longer than until
  // its next deadline.
  void AskAgentLibrary();

  // Adds one that ends the wait when it is readable; -1, and one that an fd_set
  // has no room for, are passed over.
  void WakeBy(int descriptor);

  // Does not wait at all.
  void DoNotWait() { timeout_ = {0, 0}; }

  // Whether another thread used the agent library since it was asked, and may
  // have closed a descriptor. Requires: the lock.
  bool Outdated() const;

  // Result and errno of select().
  int Wait();

  // Makes the agent library read what is readable after a Wait().
  void Read();

 private:
  void AskForLargeSet();

  unsigned long turn_ = 0;
  int count_ = 0;
  timeval timeout_;
  fd_set descriptors_;
  bool isLarge_ = false;
  netsnmp_large_fd_set large_;  // only where isLarge_
};

#endif  // SNMPSUBAGENT_RUNTIME_WAITSET_H_
