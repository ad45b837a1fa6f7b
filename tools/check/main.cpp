// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// snmpsubagent-check(1)

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "check/Command.h"

namespace snmpsubagent::check {

std::vector<std::string> SplitAtColons(const std::string& words) {
  std::vector<std::string> split;
  std::istringstream in(words);
  for (std::string word; std::getline(in, word, ':');) {
    if (!word.empty()) split.push_back(word);
  }
  return split;
}

std::chrono::milliseconds ParsedSeconds(const char* text) {
  char* end = nullptr;
  const double seconds = std::strtod(text, &end);
  if (*end || !(seconds > 0 && seconds < 3600)) throw Usage();
  return std::chrono::milliseconds(static_cast<long>(seconds * 1000));
}

}  // namespace snmpsubagent::check

namespace check = snmpsubagent::check;

namespace {

constexpr char kUsage[] =
    "usage: snmpsubagent-check mib [options] MODULE HOST\n"
    "\n"
    "Compares what the agent at HOST, which may have a port behind a colon,\n"
    "serves of a MIB module with the module.\n"
    "\n"
    "  -c, --community NAME  public, if not given\n"
    "  -M, --mibs FOLDERS    more folders of MIB files, with colons between "
    "them\n"
    "  -m, --modules NAMES   modules whose objects are not foreign, with "
    "colons\n"
    "                        between them\n"
    "  -t, --timeout SECONDS how long to wait for a response; 2\n"
    "      --set             tries SETs, too, and makes rows; what it changes "
    "is\n"
    "                        written back\n"
    "      --obsolete        misses obsolete objects, too\n"
    "      --json            reports as JSON\n"
    "\n"
    "usage: snmpsubagent-check connection [options] [HOST]\n"
    "\n"
    "Finds why managers, who ask HOST, do not see the objects of a subagent.\n"
    "\n"
    "  -x, --master ADDRESS  where the subagent connects: unix:/path,\n"
    "                        tcp:host:port, tcp6:[address]:port; if not "
    "given,\n"
    "                        unix:/var/agentx/master\n"
    "  -C, --config FILE     of snmpd; /etc/snmp/snmpd.conf\n"
    "  -o, --oid OID         what the subagent registers\n"
    "      --stopped         the subagent does not run now: the OID is to be "
    "free\n"
    "  -p, --program FILE    the subagent, whose libraries are looked at\n"
    "  -c, -t, --json        as above\n"
    "\n"
    "Exit status: 0 all is well, 1 there are findings, 2 could not check.\n";

int Run(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (command == "mib") return check::MibCommand(argc - 1, argv + 1);
  if (command == "connection") {
    return check::ConnectionCommand(argc - 1, argv + 1);
  }
  if (command != "--help") throw check::Usage();
  std::cout << kUsage;
  return check::kConformant;
}

}  // namespace

int main(int argc, char** argv) {
  // The agent library's own lines, of which none is for the reader of a report.
  netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
  try {
    return Run(argc, argv);
  } catch (const check::Usage&) {
    std::cerr << kUsage;
  } catch (const std::exception& error) {
    std::cerr << "snmpsubagent-check: " << error.what() << '\n';
  }
  return check::kCouldNotCheck;
}
