// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_CHECKCONNECTION_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_CHECKCONNECTION_H_

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "check/CheckMib.h"

namespace snmpsubagent::check {

// Why managers do not see the objects of a subagent.
enum class Cause {
  ProgramMissing,       // there is no such program, or it can't be executed
  LibraryMissing,       // a library that the program needs can't be loaded
  BadAddress,           // the master agent's address is none
  HostUnknown,          // its host has no address
  AgentXOff,            // snmpd.conf has no "master agentx"
  OtherAddress,         // snmpd.conf has another agentXSocket
  SocketMissing,        // there is no socket of that name
  SocketStale,          // its snmpd is gone
  NotASocket,           // a file of another kind
  NoPermission,         // of the socket, or of a folder on its way
  NobodyListens,        // at that port
  Unreachable,          // the host is not to be reached
  NoAgentX,             // who listens there speaks no AgentX
  MasterSilent,         // it takes the connection and never answers
  SessionRefused,       // by the master agent
  RegistrationTaken,    // another one has the OID
  RegistrationRefused,  // for another reason
  ManagerHostUnknown,   // the host that managers are to ask
  NoSnmpAgent,          // nobody listens there
  CommunityUnknown,     // or is not allowed from here
  ViewHides,            // the community's view is without the OID
  NoObjects             // all is well, but there is nothing below the OID
};

// As in the JSON report: "agentXOff".
std::string_view NameOf(Cause cause);

struct Diagnosis {
  Cause cause;
  std::string text;    // what was seen
  std::string change;  // what to do about it: the line of a file, a command
};

struct ConnectionOptions {
  // Where the subagent connects to: "unix:/path" or "/path", "tcp:host:port",
  // "tcp6:[address]:port".
  std::string master = "unix:/var/agentx/master";
  std::string config = "/etc/snmp/snmpd.conf";  // of the master agent
  std::string oid;  // what the subagent registers; empty if not to be tried
  bool stopped = false;  // the subagent does not run: the OID is to be free
  std::string program;   // the subagent's file; empty if not to be looked at
  // Who managers ask, as a whole and with which community.
  Peer manager{"localhost", "public", std::chrono::milliseconds(2000)};
};

struct ConnectionReport {
  std::vector<std::string> passed;  // what is as it should be, in order
  std::vector<Diagnosis> findings;
};

// Does what a subagent and a manager do, step by step, up to the first that
// fails. Below the OID, it registers and serves an object of its own for a
// moment. Throws CannotCheck for an OID that is none.
ConnectionReport CheckConnection(const ConnectionOptions& options);

std::string ToText(const ConnectionReport& report);

// {"connected": false, "passed": ["..."],
//  "findings": [{"cause": "agentXOff", "text": "...", "change": "..."}]}
std::string ToJson(const ConnectionReport& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_CHECKCONNECTION_H_
