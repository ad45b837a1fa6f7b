// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <sstream>

#include "check/Json.h"
#include "check/connection/CheckConnection.h"

namespace snmpsubagent::check {

std::string_view NameOf(Cause cause) {
  static constexpr std::string_view kNames[] = {
      "programMissing",    "libraryMissing",      "badAddress",
      "hostUnknown",       "agentXOff",           "otherAddress",
      "socketMissing",     "socketStale",         "notASocket",
      "noPermission",      "nobodyListens",       "unreachable",
      "noAgentX",          "masterSilent",        "sessionRefused",
      "registrationTaken", "registrationRefused", "managerHostUnknown",
      "noSnmpAgent",       "communityUnknown",    "viewHides",
      "noObjects"};
  return kNames[static_cast<std::size_t>(cause)];
}

std::string ToText(const ConnectionReport& report) {
  std::ostringstream out;
  for (const std::string& passed : report.passed)
    out << "ok: " << passed << '\n';
  for (const Diagnosis& finding : report.findings) {
    out << NameOf(finding.cause) << ": " << finding.text << '\n'
        << "  change: " << finding.change << '\n';
  }
  return out.str();
}

std::string ToJson(const ConnectionReport& report) {
  std::ostringstream out;
  out << "{\"connected\": " << (report.findings.empty() ? "true" : "false")
      << ",\n \"passed\": [";
  const char* separator = "\n  ";
  for (const std::string& passed : report.passed) {
    out << separator << JsonQuoted(passed);
    separator = ",\n  ";
  }
  out << "],\n \"findings\": [";
  separator = "\n  ";
  for (const Diagnosis& finding : report.findings) {
    out << separator << "{\"cause\": " << JsonQuoted(NameOf(finding.cause))
        << ", \"text\": " << JsonQuoted(finding.text)
        << ", \"change\": " << JsonQuoted(finding.change) << '}';
    separator = ",\n  ";
  }
  out << "]}\n";
  return out.str();
}

}  // namespace snmpsubagent::check
