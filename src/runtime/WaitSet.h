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
  // Waits no longer than this, whatever the agent library's next deadline.
  explicit WaitSet(const timeval& longestWait) : timeout_(longestWait) {
    FD_ZERO(&descriptors_);
  }
  ~WaitSet();
  WaitSet(const WaitSet&) = delete;
  WaitSet& operator=(const WaitSet&) = delete;

  // Adds the descriptors of the agent library, and waits no longer than until
  // its next deadline.
  void AskAgentLibrary();

  // Adds a descriptor that ends the wait when it is readable. Ignores -1, and
  // one that does not fit in an fd_set.
  void WakeBy(int descriptor);

  // Does not wait at all.
  void DoNotWait() { timeout_ = {0, 0}; }

  // Whether another thread has used the agent library since its descriptors
  // were added, and may have closed one. Requires: the lock.
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
