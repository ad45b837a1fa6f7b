// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_AGENTXADDRESS_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_AGENTXADDRESS_H_

#include <optional>
#include <string>

namespace snmpsubagent::check {

// Where a master agent listens, as a subagent or snmpd.conf names it.
struct AgentXAddress {
  enum class Kind { Unix, Tcp, Tcp6 };

  Kind kind = Kind::Unix;
  std::string host;  // empty for any of the machine's
  std::string port;
  std::string path;  // of a Unix socket
  std::string text;  // as it was written

  // "unix:/path", "/path", "tcp:host:port", "tcp:port", "tcp6:[address]:port".
  static std::optional<AgentXAddress> Parse(const std::string& text);

  // Whether one who listens at `other` is found with this one.
  bool Finds(const AgentXAddress& other) const;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_AGENTXADDRESS_H_
