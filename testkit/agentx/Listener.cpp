// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace testkit::agentx {
namespace {

int Checked(int result, const char* call) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), call);
  return result;
}

FileDescriptor Socket(int family) {
  return FileDescriptor(
      Checked(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket"));
}

void Listen(const FileDescriptor& socket, sockaddr* address, socklen_t size) {
  Checked(bind(socket.Number(), address, size), "bind");
  Checked(listen(socket.Number(), 8), "listen");
}

}  // namespace

Listener::Listener(int port) : socket_(Socket(AF_INET)) {
  const int on = 1;
  setsockopt(socket_.Number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<in_port_t>(port));
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  Listen(socket_, generic, length);
  Checked(getsockname(socket_.Number(), generic, &length), "getsockname");
  port_ = ntohs(address.sin_port);
  address_ = "tcp:127.0.0.1:" + std::to_string(port_);
}

Listener::Listener(const std::string& path)
    : socket_(Socket(AF_UNIX)), address_("unix:" + path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  Listen(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address);
}

FileDescriptor Listener::Accept(std::chrono::milliseconds deadline) const {
  pollfd waiting{socket_.Number(), POLLIN, 0};
  if (poll(&waiting, 1, static_cast<int>(deadline.count())) != 1) {
    throw std::runtime_error("no subagent has connected");
  }
  return FileDescriptor(Checked(
      accept4(socket_.Number(), nullptr, nullptr, SOCK_CLOEXEC), "accept"));
}

}  // namespace testkit::agentx
