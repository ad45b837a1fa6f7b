// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Report.h"

#include <array>
#include <iomanip>
#include <sstream>
#include <utility>

#include "check/Json.h"

namespace snmpsubagent::check {
namespace {

using NamedTotal = std::pair<const char*, const Total*>;

std::array<NamedTotal, 7> Named(const Totals& totals) {
  return {{{"scalars", &totals.scalars},
           {"tables", &totals.tables},
           {"columns", &totals.columns},
           {"instances", &totals.instances},
           {"goodSets", &totals.goodSets},
           {"refusedSets", &totals.refusedSets},
           {"rows", &totals.rows}}};
}

// Words for the person who reads the table.
const char* Words(const std::string& name) {
  if (name == "goodSets") return "good SETs";
  if (name == "refusedSets") return "refused SETs";
  if (name == "rows") return "rows made";
  return nullptr;
}

std::string Verdict(std::size_t findings) {
  if (findings == 0) return "conformant";
  return std::to_string(findings) + (findings == 1 ? " finding" : " findings");
}

std::string JsonOf(const Total& total) {
  std::ostringstream out;
  out << "{\"expected\": " << total.expected << ", \"right\": " << total.right
      << ", \"wrong\": " << total.wrong
      << ", \"undecided\": " << total.undecided << '}';
  return out.str();
}

std::string JsonOf(const Finding& finding) {
  return "{\"fault\": " + JsonQuoted(NameOf(finding.fault)) +
         ", \"object\": " + JsonQuoted(finding.object) +
         ", \"oid\": " + JsonQuoted(finding.oid) +
         ", \"text\": " + JsonQuoted(finding.text) + "}";
}

}  // namespace

std::string_view NameOf(Fault fault) {
  static constexpr std::string_view kNames[] = {
      "missing",    "foreign",     "type",           "length",
      "range",      "enumeration", "access",         "instance",
      "indexValue", "get",         "order",          "end",
      "noAnswer",   "goodSet",     "storedValue",    "refusedSet",
      "setError",   "rowCreation", "rowDestruction", "restoration"};
  return kNames[static_cast<std::size_t>(fault)];
}

void Total::Add(bool isRight) {
  ++expected;
  ++(isRight ? right : wrong);
}

void Total::AddUndecided(std::size_t number) {
  expected += number;
  undecided += number;
}

void Report::Add(Fault fault, const std::string& object, const std::string& oid,
                 const std::string& text) {
  findings.push_back({fault, object, oid, text});
}

std::string ToText(const Report& report) {
  std::ostringstream out;
  out << report.module << " at " << report.agent << ": "
      << Verdict(report.findings.size()) << '\n';
  for (const Finding& finding : report.findings) {
    out << "  " << NameOf(finding.fault) << ": "
        << (finding.object.empty() ? "" : finding.object + " ") << finding.oid
        << ": " << finding.text << '\n';
  }
  for (const std::string& note : report.notes)
    out << "  note: " << note << '\n';
  out << std::left << std::setw(14) << "" << std::right << std::setw(10)
      << "expected" << std::setw(8) << "right" << std::setw(8) << "wrong"
      << std::setw(11) << "undecided" << '\n';
  for (const auto& [name, total] : Named(report.totals)) {
    const char* const words = Words(name);
    out << std::left << std::setw(14) << (words ? words : name) << std::right
        << std::setw(10) << total->expected << std::setw(8) << total->right
        << std::setw(8) << total->wrong << std::setw(11) << total->undecided
        << '\n';
  }
  return out.str();
}

std::string ToJson(const Report& report) {
  std::ostringstream out;
  out << "{\"module\": " << JsonQuoted(report.module)
      << ", \"agent\": " << JsonQuoted(report.agent)
      << ", \"conformant\": " << (report.Conformant() ? "true" : "false")
      << ",\n \"totals\": {";
  const char* separator = "\n  ";
  for (const auto& [name, total] : Named(report.totals)) {
    out << separator << '"' << name << "\": " << JsonOf(*total);
    separator = ",\n  ";
  }
  out << "},\n \"findings\": [";
  separator = "\n  ";
  for (const Finding& finding : report.findings) {
    out << separator << JsonOf(finding);
    separator = ",\n  ";
  }
  out << "],\n \"notes\": [";
  separator = "\n  ";
  for (const std::string& note : report.notes) {
    out << separator << JsonQuoted(note);
    separator = ",\n  ";
  }
  out << "]}\n";
  return out.str();
}

}  // namespace snmpsubagent::check
