// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CHECKMIB_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CHECKMIB_H_

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

#include "check/Report.h"

namespace snmpsubagent::check {

// There is nothing to report: no such module, no agent that answers.
class CannotCheck : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The agent that is asked, with SNMPv2c.
struct Peer {
  // As the tools of Net-SNMP take it: "192.0.2.1", "localhost:1161",
  // "udp6:[::1]:161".
  std::string address;
  std::string community = "public";
  // For one response. A request that is lost is sent again, a SET is not.
  std::chrono::milliseconds timeout{2000};
};

struct MibOptions {
  // Folders of MIB files, besides those of Net-SNMP ($MIBDIRS or its default).
  std::vector<std::string> mibFolders;
  // More modules whose objects are not foreign where this module's are.
  std::vector<std::string> otherModules;
  // Obsolete objects are expected, too. Without it, those that the agent has
  // are checked, and those that it lacks are not missed.
  bool obsolete = false;
  // SETs are tried, too, and rows made. All that they change is written back;
  // still it is nothing for a device in use.
  bool set = false;
};

// Compares what an agent serves of a module with the MIB. Throws CannotCheck.
//
// Threads: one at a time in a process, since Net-SNMP's MIB parser, which this
// uses, has one tree per process. It keeps what it has read.
Report CheckMib(const Peer& peer, const std::string& module,
                const MibOptions& options = {});

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CHECKMIB_H_
