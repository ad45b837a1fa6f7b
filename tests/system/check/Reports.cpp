// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Reports.h"

#include <sstream>

using check::Oid;
using check::Value;

namespace {

// INDEX { "ab", "xyz", 1.3, 192.0.2.1, IMPLIED "end" }
const Oid kKey = {2, 'a', 'b', 'x', 'y', 'z', 2,   1,
                  3, 192, 0,   2,   1,   'e', 'n', 'd'};
const Oid kUser = {4, 'r', 'o', 'o', 't'};

}  // namespace

void ServeAll(ScriptedAgent::Objects& objects) {
  objects[ScalarName(1)] = Integer(-5);
  objects[ScalarName(2)] = Integer(5);
  objects[ScalarName(3)] = Text("abc");
  objects[ScalarName(4)] = Text(std::string("\x80\x40", 2));
  objects[ScalarName(5)] = Number(ASN_COUNTER, 7);
  objects[ScalarName(6)] = Value::OfOid({1, 3, 6});
  objects[ScalarName(7)] = Value::OfOctets(ASN_IPADDRESS, "\x7f\1\1\1");
  objects[ScalarName(8)] = Integer(3);
  for (const oid port : {1, 100}) {
    objects[CellName(1, 1, {port})] = Integer(static_cast<long>(port));
    objects[CellName(1, 2, {port})] = Number(ASN_GAUGE, 4000000000);
    objects[CellName(2, 1, {port})] = Number(ASN_COUNTER, 0);
  }
  objects[CellName(3, 6, kKey)] = Integer(1);
  objects[CellName(4, 2, kUser)] = Text("/bin/sh");
  objects[CellName(4, 3, kUser)] = Number(ASN_GAUGE, 10);
  objects[CellName(4, 4, kUser)] = Number(ASN_COUNTER, 1);
  objects[CellName(4, 5, kUser)] = Integer(3);
  objects[CellName(4, 6, kUser)] = Integer(1);
}

check::MibOptions CheckTestMib() {
  check::MibOptions options;
  options.mibFolders = {IMPORTED_MIBS, SHARED_MIBS, TEST_MIBS};
  return options;
}

check::Report ReportOf(const ScriptedAgent& agent,
                       const check::MibOptions& options) {
  return check::CheckMib(agent.Peer(), "CHECK-TEST-MIB", options);
}

std::vector<std::string> Findings(const check::Report& report) {
  const std::string root = check::ToText(kModule) + ".";
  std::vector<std::string> findings;
  for (const check::Finding& finding : report.findings) {
    std::string oid = finding.oid;
    if (oid.compare(0, root.size(), root) == 0) oid = oid.substr(root.size());
    findings.push_back(std::string(NameOf(finding.fault)) + " " +
                       finding.object + " " + oid);
  }
  return findings;
}

std::string TextAbout(const check::Report& report, const std::string& object) {
  for (const check::Finding& finding : report.findings) {
    if (finding.object == object) return finding.text;
  }
  return "";
}

std::string Numbers(const check::Total& total) {
  std::ostringstream out;
  out << total.expected << ' ' << total.right << ' ' << total.wrong << ' '
      << total.undecided;
  return out.str();
}
