// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <getopt.h>

#include <iostream>

#include "check/CheckMib.h"
#include "check/Command.h"

namespace snmpsubagent::check {
namespace {

struct Words {
  Peer peer;
  MibOptions mib;
  std::string module;
  bool json = false;
};

Words Parse(int argc, char** argv) {
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
  Words words;
  for (int key = 0;
       (key = getopt_long(argc, argv, "c:M:m:t:", kOptions, nullptr)) != -1;) {
    if (key == 'c') {
      words.peer.community = optarg;
    } else if (key == 'M') {
      words.mib.mibFolders = SplitAtColons(optarg);
    } else if (key == 'm') {
      words.mib.otherModules = SplitAtColons(optarg);
    } else if (key == 't') {
      words.peer.timeout = ParsedSeconds(optarg);
    } else if (key == kSet) {
      words.mib.set = true;
    } else if (key == kObsolete) {
      words.mib.obsolete = true;
    } else if (key == kJson) {
      words.json = true;
    } else {
      throw Usage();
    }
  }
  if (argc - optind != 2) throw Usage();
  words.module = argv[optind];
  words.peer.address = argv[optind + 1];
  return words;
}

}  // namespace

int MibCommand(int argc, char** argv) {
  const Words words = Parse(argc, argv);
  const Report report = CheckMib(words.peer, words.module, words.mib);
  std::cout << (words.json ? ToJson(report) : ToText(report));
  return report.Conformant() ? kConformant : kFindings;
}

}  // namespace snmpsubagent::check
