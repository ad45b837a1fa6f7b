// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// snmpsubagent-check(1)

#include <getopt.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <cstring>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "check/CheckMib.h"

namespace check = snmpsubagent::check;

namespace {

enum ExitStatus { kConformant = 0, kFindings = 1, kCouldNotCheck = 2 };

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
    "Exit status: 0 the agent conforms, 1 there are findings, 2 could not "
    "check.\n";

struct Usage : std::exception {};

struct Options {
  check::Peer peer;
  check::MibOptions mib;
  std::string module;
  bool json = false;
};

std::vector<std::string> Split(const std::string& words) {
  std::vector<std::string> split;
  std::istringstream in(words);
  for (std::string word; std::getline(in, word, ':');) {
    if (!word.empty()) split.push_back(word);
  }
  return split;
}

std::chrono::milliseconds Seconds(const char* text) {
  char* end = nullptr;
  const double seconds = std::strtod(text, &end);
  if (*end || !(seconds > 0 && seconds < 3600)) throw Usage();
  return std::chrono::milliseconds(static_cast<long>(seconds * 1000));
}

Options Parse(int argc, char** argv) {
  enum { kSet = 256, kObsolete, kJson };
  static const option kOptions[] = {
      {"community", required_argument, nullptr, 'c'},
      {"mibs", required_argument, nullptr, 'M'},
      {"modules", required_argument, nullptr, 'm'},
      {"timeout", required_argument, nullptr, 't'},
      {"set", no_argument, nullptr, kSet},
      {"obsolete", no_argument, nullptr, kObsolete},
      {"json", no_argument, nullptr, kJson},
      {}};
  Options options;
  for (int key = 0;
       (key = getopt_long(argc, argv, "c:M:m:t:", kOptions, nullptr)) != -1;) {
    switch (key) {
      case 'c':
        options.peer.community = optarg;
        break;
      case 'M':
        options.mib.mibFolders = Split(optarg);
        break;
      case 'm':
        options.mib.otherModules = Split(optarg);
        break;
      case 't':
        options.peer.timeout = Seconds(optarg);
        break;
      case kSet:
        options.mib.set = true;
        break;
      case kObsolete:
        options.mib.obsolete = true;
        break;
      case kJson:
        options.json = true;
        break;
      default:
        throw Usage();
    }
  }
  if (argc - optind != 2) throw Usage();
  options.module = argv[optind];
  options.peer.address = argv[optind + 1];
  return options;
}

int CheckMib(int argc, char** argv) {
  const Options options = Parse(argc, argv);
  const check::Report report =
      check::CheckMib(options.peer, options.module, options.mib);
  std::cout << (options.json ? ToJson(report) : ToText(report));
  return report.Conformant() ? kConformant : kFindings;
}

int Run(int argc, char** argv) {
  if (argc > 1 && std::strcmp(argv[1], "--help") == 0) {
    std::cout << kUsage;
    return kConformant;
  }
  if (argc > 1 && std::strcmp(argv[1], "mib") == 0) {
    return CheckMib(argc - 1, argv + 1);
  }
  throw Usage();
}

}  // namespace

int main(int argc, char** argv) {
  // The agent library's own lines, of which none is for the reader of a report.
  netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
  try {
    return Run(argc, argv);
  } catch (const Usage&) {
    std::cerr << kUsage;
  } catch (const std::exception& error) {
    std::cerr << "snmpsubagent-check: " << error.what() << '\n';
  }
  return kCouldNotCheck;
}
