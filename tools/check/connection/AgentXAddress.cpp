// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/AgentXAddress.h"

#include <algorithm>
#include <set>

namespace snmpsubagent::check {
namespace {

bool TakePrefix(std::string& text, const std::string& prefix) {
  if (text.compare(0, prefix.size(), prefix) != 0) return false;
  text.erase(0, prefix.size());
  return true;
}

bool IsPort(const std::string& text) {
  return !text.empty() && text.size() <= 5 &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; }) &&
         std::stoi(text) >= 1 && std::stoi(text) <= 65535;
}

// Names of this machine, of which one finds whoever listens at another.
bool IsThisMachine(const std::string& host) {
  static const std::set<std::string> kNames = {"",    "localhost", "127.0.0.1",
                                               "::1", "0.0.0.0",   "::"};
  return kNames.count(host) != 0;
}

}  // namespace

std::optional<AgentXAddress> AgentXAddress::Parse(const std::string& text) {
  AgentXAddress address;
  address.text = text;
  std::string rest = text;
  if (TakePrefix(rest, "unix:") || text.compare(0, 1, "/") == 0) {
    address.path = rest;
    return rest.empty() ? std::nullopt : std::optional(address);
  }
  if (TakePrefix(rest, "tcp6:") || TakePrefix(rest, "tcpipv6:")) {
    address.kind = Kind::Tcp6;
  } else if (TakePrefix(rest, "tcp:")) {
    address.kind = Kind::Tcp;
  } else {
    return std::nullopt;
  }
  const std::size_t colon = rest.rfind(':');
  address.port = colon == std::string::npos ? rest : rest.substr(colon + 1);
  if (colon != std::string::npos) address.host = rest.substr(0, colon);
  if (address.host.size() > 2 && address.host.front() == '[') {
    address.host = address.host.substr(1, address.host.size() - 2);
  }
  return IsPort(address.port) ? std::optional(address) : std::nullopt;
}

bool AgentXAddress::Finds(const AgentXAddress& other) const {
  if (kind != other.kind) return false;
  if (kind == Kind::Unix) return path == other.path;
  return port == other.port &&
         (host == other.host ||
          (IsThisMachine(host) && IsThisMachine(other.host)));
}

}  // namespace snmpsubagent::check
