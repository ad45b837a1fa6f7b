// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/MasterSocket.h"

#include <fcntl.h>
#include <grp.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace snmpsubagent::check {
namespace {

struct Endpoint {
  sockaddr_storage address{};
  socklen_t size = 0;
};

constexpr char kStart[] = "start the master agent: systemctl start snmpd";

std::string GroupName() {
  const group* const found = getgrgid(getegid());
  return found ? found->gr_name : std::to_string(getegid());
}

// The first folder on the way to `path` that this user can't search, or `path`
// itself.
std::string Obstacle(const std::string& path) {
  std::filesystem::path way;
  const std::filesystem::path folder =
      std::filesystem::path(path).parent_path();
  for (const auto& part : folder) {
    way /= part;
    if (access(way.c_str(), X_OK) != 0) return way;
  }
  return path;
}

Diagnosis PermissionDenied(const std::string& path, const std::string& file) {
  const std::string obstacle = Obstacle(path);
  return {Cause::NoPermission,
          "this user (" + std::to_string(geteuid()) + ", group " + GroupName() +
              ") may not " + (obstacle == path ? "write to " : "search ") +
              obstacle,
          "in " + file + ": agentXPerms 0660 0750 root " + GroupName()};
}

// What there is in the place of a Unix socket that does not take a connection.
Diagnosis UnixFailure(const std::string& path, int error,
                      const std::string& file) {
  if (error == EACCES || error == EPERM) return PermissionDenied(path, file);
  struct stat status;
  if (stat(path.c_str(), &status) != 0) {
    if (errno == EACCES) return PermissionDenied(path, file);
    const auto folder = std::filesystem::path(path).parent_path();
    const bool hasFolder = access(folder.c_str(), F_OK) == 0;
    return {Cause::SocketMissing,
            hasFolder ? "there is no " + path
                      : "there is no folder " + folder.string(),
            std::string(kStart) + ", and in " + file +
                ": agentXSocket unix:" + path};
  }
  if (!S_ISSOCK(status.st_mode)) {
    return {Cause::NotASocket, path + " is no socket",
            "remove " + path + ", and restart snmpd, which makes a socket"};
  }
  return {
      Cause::SocketStale,
      "nobody listens at " + path + ": it is left of an snmpd that has gone",
      kStart};
}

Diagnosis TcpFailure(const AgentXAddress& address, int error,
                     const std::string& file) {
  if (error == ECONNREFUSED) {
    return {Cause::NobodyListens, "nobody listens at " + address.text,
            std::string(kStart) + ", and in " + file + ": agentXSocket " +
                address.text};
  }
  return {Cause::Unreachable,
          address.text + " is not to be reached: " + std::strerror(error),
          "look at the network between the two, and its firewalls"};
}

// What snmpd.conf says of the cause, if it does.
std::optional<Diagnosis> FromConfig(const AgentXAddress& address,
                                    const SnmpdConfig& config) {
  if (!config.IsKnown()) return std::nullopt;
  if (!config.TakesSubagents()) {
    const auto almost = config.AlmostTakesSubagents();
    return Diagnosis{
        Cause::AgentXOff,
        "snmpd takes no subagents: " +
            (almost ? almost->place + " says '" + almost->text + "'"
                    : config.File() + " has no line for it"),
        "in " + (almost ? almost->place : config.File()) + ": master agentx"};
  }
  for (const AgentXAddress& socket : config.Sockets()) {
    if (address.Finds(socket)) return std::nullopt;
  }
  const auto line = config.SocketLine();
  return Diagnosis{
      Cause::OtherAddress,
      "the subagent connects to " + address.text + ", and snmpd listens at " +
          (line ? line->words.size() > 1 ? line->words[1] : "nothing"
                : "its default, unix:/var/agentx/master"),
      "in " + (line ? line->place : config.File()) + ": agentXSocket " +
          address.text + "; or the address in the subagent"};
}

std::vector<Endpoint> UnixEndpoint(const std::string& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) return {};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.data(), path.size());
  Endpoint endpoint;
  std::memcpy(&endpoint.address, &address, sizeof address);
  endpoint.size = sizeof address;
  return {endpoint};
}

std::vector<Endpoint> TcpEndpoints(const AgentXAddress& address,
                                   std::string& reason) {
  addrinfo hints{};
  hints.ai_family =
      address.kind == AgentXAddress::Kind::Tcp6 ? AF_INET6 : AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* first = nullptr;
  const int error =
      getaddrinfo(address.host.empty() ? nullptr : address.host.c_str(),
                  address.port.c_str(), &hints, &first);
  if (error != 0) {
    reason = gai_strerror(error);
    return {};
  }
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(first,
                                                             freeaddrinfo);
  std::vector<Endpoint> endpoints;
  for (const addrinfo* info = first; info; info = info->ai_next) {
    Endpoint endpoint;
    std::memcpy(&endpoint.address, info->ai_addr, info->ai_addrlen);
    endpoint.size = info->ai_addrlen;
    endpoints.push_back(endpoint);
  }
  return endpoints;
}

// Connects, or returns -1 with `error`.
int Connect(const Endpoint& endpoint, std::chrono::milliseconds timeout,
            int& error) {
  const int descriptor = socket(endpoint.address.ss_family,
                                SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  error = 0;
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&endpoint.address),
              endpoint.size) != 0) {
    error = errno;
  }
  if (error == EINPROGRESS) {
    pollfd wait{descriptor, POLLOUT, 0};
    socklen_t size = sizeof error;
    if (poll(&wait, 1, static_cast<int>(timeout.count())) <= 0) {
      error = ETIMEDOUT;
    } else {
      getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
    }
  }
  if (error == 0) return descriptor;
  close(descriptor);
  return -1;
}

// That the address leads nowhere.
Diagnosis NoEndpoint(const AgentXAddress& address, const std::string& reason) {
  const std::string what = address.text + ": " + reason;
  const std::string change = "the address in the subagent";
  if (address.kind == AgentXAddress::Kind::Unix) {
    return {Cause::BadAddress, what, change};
  }
  return {Cause::HostUnknown, what,
          "in /etc/hosts: a line for it; or " + change};
}

}  // namespace

MasterSocket::MasterSocket(const AgentXAddress& address,
                           const SnmpdConfig& config,
                           std::chrono::milliseconds timeout) {
  const bool isUnix = address.kind == AgentXAddress::Kind::Unix;
  std::string reason = "its path is too long";
  const std::vector<Endpoint> endpoints =
      isUnix ? UnixEndpoint(address.path) : TcpEndpoints(address, reason);
  if (endpoints.empty()) {
    failure_ = NoEndpoint(address, reason);
    return;
  }
  int error = 0;
  for (const Endpoint& endpoint : endpoints) {
    descriptor_ = Connect(endpoint, timeout, error);
    if (descriptor_ >= 0) return;
  }
  failure_ = isUnix ? UnixFailure(address.path, error, config.File())
                    : TcpFailure(address, error, config.File());
  if (failure_->cause == Cause::NoPermission) return;
  if (const auto known = FromConfig(address, config)) failure_ = known;
}

MasterSocket::~MasterSocket() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace snmpsubagent::check
