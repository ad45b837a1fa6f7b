// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_AGENTX_LISTENER_H_
#define SNMPSUBAGENT_TESTS_AGENTX_LISTENER_H_

#include <chrono>

#include "integration/support/FileDescriptor.h"

namespace agentx {

// Where a master agent waits for its subagents: a TCP port of 127.0.0.1.
class Listener {
 public:
  // At that port; at a free one for 0. Throws std::system_error.
  explicit Listener(int port = 0);

  int Port() const { return port_; }

  // The next connection. Throws std::runtime_error if none has come in time.
  support::FileDescriptor Accept(std::chrono::milliseconds deadline) const;

 private:
  support::FileDescriptor socket_;
  int port_;
};

}  // namespace agentx

#endif  // SNMPSUBAGENT_TESTS_AGENTX_LISTENER_H_
