// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_SNMPDCONFIG_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_SNMPDCONFIG_H_

#include <optional>
#include <string>
#include <vector>

#include "check/connection/AgentXAddress.h"

namespace snmpsubagent::check {

// The lines of snmpd.conf(5), and of the files that it includes, that decide
// whether a subagent is heard.
class SnmpdConfig {
 public:
  struct Line {
    std::string place;               // "/etc/snmp/snmpd.conf:7"
    std::string text;                // as it stands there
    std::vector<std::string> words;  // the first one in small letters
  };

  explicit SnmpdConfig(const std::string& file);

  const std::string& File() const { return file_; }
  // Whether the file could be read. If not, nothing is known.
  bool IsKnown() const { return isKnown_; }

  // "master agentx", with its spellings.
  bool TakesSubagents() const;
  // A line that speaks of it and does not say so: a comment, another value.
  std::optional<Line> AlmostTakesSubagents() const;

  // The line with agentXSocket, if there is one, and where it lets snmpd
  // listen; Net-SNMP's default without.
  std::optional<Line> SocketLine() const;
  std::vector<AgentXAddress> Sockets() const;

  // The line that knows the community: rocommunity, rwcommunity or com2sec.
  std::optional<Line> CommunityLine(const std::string& community) const;
  // The view that limits what such a line shows: its own, or that of its
  // group; empty if it has none.
  std::string ViewOf(const Line& community) const;

 private:
  void Read(const std::string& file, int depth);
  std::vector<std::string> Find(const std::string& word, std::size_t place,
                                const std::string& value) const;
  std::optional<Line> Last(const std::string& word) const;

  std::string file_;
  bool isKnown_ = false;
  std::vector<Line> lines_;
  std::vector<Line> comments_;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_SNMPDCONFIG_H_
