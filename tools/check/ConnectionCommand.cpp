// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <getopt.h>

#include <iostream>

#include "check/Command.h"
#include "check/connection/CheckConnection.h"

namespace snmpsubagent::check {
namespace {

struct Words {
  ConnectionOptions options;
  bool json = false;
};

Words Parse(int argc, char** argv) {
  enum { kStopped = 256, kJson };
  static const option kOptions[] = {
      {"community", required_argument, nullptr, 'c'},
      {"config", required_argument, nullptr, 'C'},
      {"oid", required_argument, nullptr, 'o'},
      {"program", required_argument, nullptr, 'p'},
      {"timeout", required_argument, nullptr, 't'},
      {"master", required_argument, nullptr, 'x'},
      {"stopped", no_argument, nullptr, kStopped},
      {"json", no_argument, nullptr, kJson},
      {}};
  Words words;
  ConnectionOptions& options = words.options;
  for (int key = 0; (key = getopt_long(argc, argv, "c:C:o:p:t:x:", kOptions,
                                       nullptr)) != -1;) {
    if (key == 'c') {
      options.manager.community = optarg;
    } else if (key == 'C') {
      options.config = optarg;
    } else if (key == 'o') {
      options.oid = optarg;
    } else if (key == 'p') {
      options.program = optarg;
    } else if (key == 't') {
      options.manager.timeout = ParsedSeconds(optarg);
    } else if (key == 'x') {
      options.master = optarg;
    } else if (key == kStopped) {
      options.stopped = true;
    } else if (key == kJson) {
      words.json = true;
    } else {
      throw Usage();
    }
  }
  if (argc - optind > 1) throw Usage();
  if (argc - optind == 1) options.manager.address = argv[optind];
  return words;
}

}  // namespace

int ConnectionCommand(int argc, char** argv) {
  const Words words = Parse(argc, argv);
  const ConnectionReport report = CheckConnection(words.options);
  std::cout << (words.json ? ToJson(report) : ToText(report));
  return report.findings.empty() ? kConformant : kFindings;
}

}  // namespace snmpsubagent::check
