// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/LoopbackPort.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <cstring>
#include <random>
#include <stdexcept>

namespace testkit {
namespace {

constexpr int kFirstPort = 12000;
constexpr int kLastPort = 31999;

// Returns the socket that claims the port; none if it is claimed already.
FileDescriptor Claim(int port) {
  const std::string name = "snmpsubagent-test-port-" + std::to_string(port);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path + 1, name.data(), name.size());
  const auto length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());

  FileDescriptor claim(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (bind(claim.Number(), reinterpret_cast<sockaddr*>(&address), length) != 0)
    return FileDescriptor();
  return claim;
}

bool CanBind(int port, int type) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const FileDescriptor probe(socket(AF_INET, type | SOCK_CLOEXEC, 0));
  return bind(probe.Number(), reinterpret_cast<sockaddr*>(&address),
              sizeof(address)) == 0;
}

int RandomPort() {
  static std::mt19937 generator{std::random_device{}()};
  return std::uniform_int_distribution<>(kFirstPort, kLastPort)(generator);
}

}  // namespace

LoopbackPort::LoopbackPort() {
  for (int attempt = 0; attempt < 1000; ++attempt) {
    number_ = RandomPort();
    claim_ = Claim(number_);
    if (claim_.IsOpen() && CanBind(number_, SOCK_STREAM) &&
        CanBind(number_, SOCK_DGRAM)) {
      return;
    }
  }
  throw std::runtime_error("no free loopback port");
}

std::string LoopbackPort::Address() const {
  return "127.0.0.1:" + std::to_string(number_);
}

}  // namespace testkit
