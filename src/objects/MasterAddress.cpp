// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/MasterAddress.h"

#include <netdb.h>
#include <sys/un.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

namespace snmpsubagent::detail {
namespace {

bool TakePrefix(std::string& text, const char* prefix) {
  if (text.compare(0, std::strlen(prefix), prefix) != 0) return false;
  text.erase(0, std::strlen(prefix));
  return true;
}

bool IsPort(const std::string& text) {
  return !text.empty() && text.size() <= 5 &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; }) &&
         std::stoi(text) >= 1 && std::stoi(text) <= 65535;
}

// Host and port of "host:port" or "[address]:port"; an empty port if it is
// neither.
std::pair<std::string, std::string> Split(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos) return {};
  std::string host = text.substr(0, colon);
  if (host.size() >= 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  }
  return {host, text.substr(colon + 1)};
}

}  // namespace

MasterAddress::MasterAddress(std::string text) : text_(std::move(text)) {
  std::string rest = text_;
  if (TakePrefix(rest, "unix:")) {
    family_ = AF_UNIX;
    host_ = rest;
    if (!host_.empty() && host_.size() < sizeof(sockaddr_un::sun_path)) return;
  } else if (const bool six = TakePrefix(rest, "tcp6:");
             six || TakePrefix(rest, "tcp:")) {
    family_ = six ? AF_INET6 : AF_INET;
    std::tie(host_, port_) = Split(rest);
    const bool isOfFamily = six || host_.find(':') == std::string::npos;
    if (!host_.empty() && isOfFamily && IsPort(port_)) return;
  }
  throw std::invalid_argument(
      "master agent '" + text_ +
      "': expected unix:/path, tcp:host:port or tcp6:[address]:port");
}

std::vector<MasterAddress::Endpoint> MasterAddress::Known() const {
  if (family_ == AF_UNIX) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, host_.data(), host_.size());
    Endpoint endpoint{};
    std::memcpy(&endpoint.address, &address, sizeof address);
    endpoint.size = sizeof address;
    return {endpoint};
  }
  std::string reason;
  return Resolve(AI_NUMERICHOST | AI_NUMERICSERV, reason);
}

std::vector<MasterAddress::Endpoint> MasterAddress::LookUp(
    std::string& reason) const {
  return Resolve(AI_NUMERICSERV, reason);
}

std::vector<MasterAddress::Endpoint> MasterAddress::Resolve(
    int flags, std::string& reason) const {
  addrinfo hints{};
  hints.ai_family = family_;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = flags;
  addrinfo* first = nullptr;
  const int error = getaddrinfo(host_.c_str(), port_.c_str(), &hints, &first);
  if (error != 0) {
    reason = "no connection to " + Text() + ": the name " + host_ +
             " is not known (" + gai_strerror(error) +
             "); give an address, or add the name to /etc/hosts";
    return {};
  }
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(first,
                                                             freeaddrinfo);
  std::vector<Endpoint> endpoints;
  for (const addrinfo* info = first; info; info = info->ai_next) {
    Endpoint endpoint{};
    std::memcpy(&endpoint.address, info->ai_addr, info->ai_addrlen);
    endpoint.size = info->ai_addrlen;
    endpoints.push_back(endpoint);
  }
  return endpoints;
}

}  // namespace snmpsubagent::detail
