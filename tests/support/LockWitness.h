// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LOCKWITNESS_H_
#define SNMPSUBAGENT_TESTS_LOCKWITNESS_H_

#include "NetSNMPAgentGuard.h"
#include "NetSNMPIntNodeData.h"
#include "adapter/AgentLock.h"

// The turn that a new request for the lock would get.
inline unsigned long TurnNow() {
  const NetSNMPAgentGuard guard;
  return agent_lock::Turn();
}

// Whether this thread has the lock of NetSNMPAgentGuard: a nested guard does
// not release it for good.
inline bool HoldsLock() {
  const unsigned long first = TurnNow();
  return TurnNow() == first;
}

// A value that records whether the lock was held whenever it was cloned.
class LockWitness : public NetSNMPIntNodeData {
 public:
  explicit LockWitness(bool& alwaysHeld)
      : NetSNMPIntNodeData(nullptr, eNodeAccessReadOnly),
        alwaysHeld_(alwaysHeld) {}
  NetSNMPNodeData* Clone() const override {
    alwaysHeld_ = alwaysHeld_ && HoldsLock();
    return new LockWitness(*this);
  }

 private:
  bool& alwaysHeld_;
};

#endif  // SNMPSUBAGENT_TESTS_LOCKWITNESS_H_
