// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace testkit::agentx {
namespace {

int Checked(int result, const char* call) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), call);
  return result;
}

}  // namespace

Listener::Listener(int port)
    : socket_(
          Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket")) {
  const int on = 1;
  setsockopt(socket_.Number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<in_port_t>(port));
  socklen_t length = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  Checked(bind(socket_.Number(), generic, length), "bind");
  Checked(listen(socket_.Number(), 8), "listen");
  Checked(getsockname(socket_.Number(), generic, &length), "getsockname");
  port_ = ntohs(address.sin_port);
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
