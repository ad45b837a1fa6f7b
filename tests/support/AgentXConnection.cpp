// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/AgentXConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;
using testkit::WaitFor;

namespace support {
namespace {

bool IsConnectedTo(int descriptor, int port) {
  sockaddr_in peer{};
  socklen_t length = sizeof(peer);
  return getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &length) ==
             0 &&
         peer.sin_family == AF_INET && ntohs(peer.sin_port) == port;
}

int FindDescriptor(int port) {
  for (const auto& entry :
       std::filesystem::directory_iterator("/proc/self/fd")) {
    const int descriptor = std::stoi(entry.path().filename());
    if (IsConnectedTo(descriptor, port)) return descriptor;
  }
  throw std::runtime_error("no connection to port " + std::to_string(port));
}

}  // namespace

AgentXConnection::AgentXConnection(int masterPort)
    : descriptor_(FindDescriptor(masterPort)) {}

// Writing to a connection whose other end is closed makes the system there
// answer with a reset.
bool AgentXConnection::WaitUntilBroken() const {
  return WaitFor(
      [this] {
        return send(descriptor_, "", 1, MSG_NOSIGNAL) < 0 && errno == EPIPE;
      },
      Deadlines::Session());
}

}  // namespace support
