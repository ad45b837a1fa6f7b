// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/UdpSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cerrno>
#include <system_error>
#include <vector>

namespace snmpsubagent::testing::internal {
namespace {

constexpr std::size_t kMaxSize = 65536;

sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

const sockaddr* Generic(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

UdpSocket::UdpSocket()
    : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  const sockaddr_in address = Loopback(0);
  if (bind(Descriptor(), Generic(address), sizeof address) != 0) {
    throw std::system_error(errno, std::generic_category(), "bind");
  }
}

std::string UdpSocket::Address() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(Descriptor(), reinterpret_cast<sockaddr*>(&address), &size);
  return "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

void UdpSocket::Send(const std::string& bytes, int port) const {
  Send(bytes, Loopback(port));
}

// What gets lost is noticed by whoever waits for the response.
void UdpSocket::Send(const std::string& bytes,
                     const sockaddr_in& receiver) const {
  sendto(Descriptor(), bytes.data(), bytes.size(), 0, Generic(receiver),
         sizeof receiver);
}

std::optional<UdpSocket::Datagram> UdpSocket::Receive() const {
  Datagram datagram{std::string(kMaxSize, '\0'), {}};
  socklen_t size = sizeof datagram.sender;
  const ssize_t received =
      recvfrom(Descriptor(), datagram.bytes.data(), kMaxSize, 0,
               reinterpret_cast<sockaddr*>(&datagram.sender), &size);
  if (received < 0) return std::nullopt;
  datagram.bytes.resize(static_cast<std::size_t>(received));
  return datagram;
}

}  // namespace snmpsubagent::testing::internal
