// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_

#include <chrono>

#include "testkit/FileDescriptor.h"

namespace testkit::agentx {

// Where a master agent waits for its subagents: a TCP port of 127.0.0.1.
class Listener {
 public:
  // At that port; at a free one for 0. Throws std::system_error.
  explicit Listener(int port = 0);

  int Port() const { return port_; }

  // The next connection. Throws std::runtime_error if none has come in time.
  FileDescriptor Accept(std::chrono::milliseconds deadline) const;

 private:
  FileDescriptor socket_;
  int port_;
};

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_
