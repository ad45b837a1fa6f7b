// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CONNECTIONRECEIVER_H_
#define SNMPSUBAGENT_TESTS_CONNECTIONRECEIVER_H_

#include <mutex>
#include <vector>

#include "ISNMPSubAgentCallback.h"

namespace support {

// A receiver of connection changes that records the states.
class ConnectionReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int state) override;

  // All states received, in order.
  std::vector<int> States() const;

  // Waits until exactly these were received; returns whether they were.
  bool WaitForStates(const std::vector<int>& states) const;

 private:
  mutable std::mutex mutex_;
  std::vector<int> states_;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_CONNECTIONRECEIVER_H_
