// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// How a connection comes up: one endpoint of the master agent after the other.
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "objects/Clock.h"
#include "objects/Connection.h"

namespace snmpsubagent::detail {
namespace {

// What is to be done about a connection that fails so.
std::string Advice(const std::string& master, int error) {
  const std::string what =
      "no connection to " + master + ": " +
      std::error_code(error, std::generic_category()).message();
  switch (error) {
    case ENOENT:
    case ECONNREFUSED:
      return what +
             "; is snmpd running, with \"master agentx\" and this "
             "agentXSocket in its snmpd.conf?";
    case EACCES:
      return what + "; give this user access with agentXPerms in snmpd.conf";
    default:
      return what;
  }
}

}  // namespace

void Connection::Connect() {
  connecting_ = true;
  failure_.clear();
  const std::uint64_t attempt = ++*attempt_;
  if (Endpoints known = master_.Known(); !known.empty()) {
    ConnectTo(std::move(known));
    return;
  }
  struct Found {
    Endpoints endpoints;
    std::string reason = "there is no memory for its name";
  };
  const auto found = std::make_shared<Found>();
  lookUp_([master = master_,
           found] { found->endpoints = master.LookUp(found->reason); },
          [this, attempt, current = attempt_, found] {
            if (*current != attempt) return;
            failure_ = std::move(found->reason);
            ConnectTo(std::move(found->endpoints));
            Wake();
          });
}

void Connection::ConnectTo(Endpoints endpoints) {
  endpoints_ = std::move(endpoints);
  TryNextEndpoint();
}

// Ends the attempt if there is none left.
void Connection::TryNextEndpoint() {
  while (!endpoints_.empty()) {
    const MasterAddress::Endpoint endpoint = endpoints_.front();
    endpoints_.erase(endpoints_.begin());
    if (StartConnecting(endpoint)) return;
    failure_ = Advice(master_.Text(), errno);
  }
  CloseSocket();
  session_.ConnectFailed(Now(), failure_);
}

void Connection::GiveUpEndpoint(int error) {
  failure_ = Advice(master_.Text(), error);
  TryNextEndpoint();
}

// False with errno.
bool Connection::StartConnecting(const MasterAddress::Endpoint& endpoint) {
  const int family = endpoint.address.ss_family;
  socket_ = FileDescriptor(
      socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket_.IsOpen()) return false;
  ++socketCount_;
  watched_ = 0;
  if (family != AF_UNIX) {
    const int on = 1;
    setsockopt(socket_.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  }
  const bool started =
      connect(socket_.Number(),
              reinterpret_cast<const sockaddr*>(&endpoint.address),
              endpoint.size) == 0 ||
      errno == EINPROGRESS;
  if (!started) return false;
  connectDeadline_ = Now() + patience_;
  Watch(EPOLLOUT);
  return true;
}

void Connection::FinishConnecting() {
  int error = 0;
  socklen_t size = sizeof error;
  getsockopt(socket_.Number(), SOL_SOCKET, SO_ERROR, &error, &size);
  if (error != 0) {
    GiveUpEndpoint(error);
    return;
  }
  connecting_ = false;
  connectDeadline_.reset();
  endpoints_.clear();
  Watch(EPOLLIN);
  session_.Connected(Now());
}

}  // namespace snmpsubagent::detail
