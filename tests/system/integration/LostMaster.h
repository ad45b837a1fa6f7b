// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LOSTMASTER_H_
#define SNMPSUBAGENT_TESTS_LOSTMASTER_H_

#include <gtest/gtest.h>

#include <vector>

#include "NetSNMPAgentGuard.h"
#include "support/Session.h"

// A session whose master agent goes and comes back.
class LostMaster : public testing::Test {
 protected:
  // Ends the master agent and waits until the subagent has noticed.
  void LoseMaster() {
    session_.Master().End();
    states_.push_back(0);
    ASSERT_TRUE(session_.Receiver().WaitForStates(states_));
  }

  // Starts it again and waits until the subagent serves what it keeps.
  void RegainMaster() {
    session_.Master().Start();
    states_.push_back(1);
    ASSERT_TRUE(session_.Receiver().WaitForStates(states_));
    // The agent library registers everything again after it has reported the
    // session, but before it releases the lock.
    const NetSNMPAgentGuard guard;
  }

  support::Session session_;

 private:
  std::vector<int> states_ = {1};
};

#endif  // SNMPSUBAGENT_TESTS_LOSTMASTER_H_
