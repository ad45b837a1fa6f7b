// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_

#include <chrono>
#include <string>

#include "testkit/FileDescriptor.h"

namespace testkit::agentx {

// Where a master agent waits for its subagents: a TCP port of 127.0.0.1, or a
// Unix socket.
class Listener {
 public:
  // At that port; at a free one for 0. Throws std::system_error.
  explicit Listener(int port = 0);
  // At that path, which does not exist yet. Throws std::system_error.
  explicit Listener(const std::string& path);

  // As a subagent is given it: "tcp:127.0.0.1:1705" or "unix:/path".
  const std::string& Address() const { return address_; }
  int Port() const { return port_; }

  // The next connection. Throws std::runtime_error if none has come in time.
  FileDescriptor Accept(std::chrono::milliseconds deadline) const;

 private:
  FileDescriptor socket_;
  std::string address_;
  int port_ = 0;
};

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_LISTENER_H_
