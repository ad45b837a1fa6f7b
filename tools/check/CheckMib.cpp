// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/CheckMib.h"

#include <algorithm>
#include <map>
#include <utility>

#include "check/InstanceCheck.h"
#include "check/Manager.h"
#include "check/MibModule.h"
#include "check/ReadCheck.h"
#include "check/Served.h"
#include "check/SetCheck.h"
#include "check/Walk.h"

namespace snmpsubagent::check {
namespace {

// Findings of one kind about one object, before the rest is only counted.
constexpr std::size_t kMostOfAKind = 3;

const Oid kSysUpTime = {1, 3, 6, 1, 2, 1, 1, 3, 0};

void RequireAnAgent(Manager& manager, const Peer& peer) {
  if (manager.Get({kSysUpTime}).answered) return;
  throw CannotCheck("no response from " + peer.address +
                    ": no agent listens there, or it does not know the "
                    "community");
}

// Counts what the MIB has, and adds what the agent lacks to the findings.
class Counting {
 public:
  Counting(const Served& served, const MibOptions& options, Report& report)
      : served_(served), options_(options), report_(report) {}

  void All() {
    for (const MibObject& object : served_.module.Objects()) {
      if (!object.table && IsExpected(object)) Scalar(object);
    }
    for (const MibTable& table : served_.module.Tables()) Table(table);
  }

 private:
  bool IsExpected(const MibObject& object) const {
    return object.Readable() && (!object.obsolete || options_.obsolete ||
                                 !served_.Of(object).instances.empty());
  }

  void Scalar(const MibObject& object) {
    const bool served = !served_.Of(object).instances.empty();
    if (!served) AddMissing(object, "the agent has no instance of it");
    report_.totals.scalars.Add(served && !served_.Of(object).faulty);
  }

  void Table(const MibTable& table) {
    std::vector<const MibObject*> columns;
    bool hasRows = false;
    for (const std::size_t number : table.columns) {
      const MibObject& column = served_.module.Objects()[number];
      hasRows = hasRows || !served_.Of(column).instances.empty();
      if (IsExpected(column)) columns.push_back(&column);
    }
    if (columns.empty()) return;
    if (!hasRows) {
      report_.totals.tables.AddUndecided();
      report_.totals.columns.AddUndecided(columns.size());
      return;
    }
    bool right = true;
    for (const MibObject* column : columns) right = Column(*column) && right;
    report_.totals.tables.Add(right);
  }

  bool Column(const MibObject& column) {
    const bool served = !served_.Of(column).instances.empty();
    if (!served) AddMissing(column, "no row of its table has it");
    const bool right = served && !served_.Of(column).faulty;
    report_.totals.columns.Add(right);
    return right;
  }

  void AddMissing(const MibObject& object, const std::string& text) {
    report_.Add(Fault::Missing, object.name, ToText(object.oid), text);
  }

  const Served& served_;
  const MibOptions& options_;
  Report& report_;
};

// Tells what the checks have left out.
void AddNotes(const MibModule& module, Report& report) {
  for (const MibObject& object : module.Objects()) {
    if (object.syntax.base != Base::Unknown) continue;
    report.notes.push_back("the values of " + object.name +
                           " were not compared: its SYNTAX comes from a module "
                           "that was not found");
  }
  for (const MibTable& table : module.Tables()) {
    if (!table.indexes.empty()) continue;
    report.notes.push_back("the instances of " + table.name +
                           " were not compared: its INDEX comes from a module "
                           "that was not found");
  }
}

// Of findings that are alike, the first few remain, with the number of others.
void Condense(std::vector<Finding>& findings) {
  std::map<std::pair<Fault, std::string>, std::size_t> numbers;
  std::vector<Finding> kept;
  for (const Finding& finding : findings) {
    if (++numbers[{finding.fault, finding.object}] <= kMostOfAKind) {
      kept.push_back(finding);
    }
  }
  std::map<std::pair<Fault, std::string>, std::size_t> seen;
  for (Finding& finding : kept) {
    const std::pair key(finding.fault, finding.object);
    if (++seen[key] < kMostOfAKind || numbers[key] == kMostOfAKind) continue;
    finding.text += " (and " + std::to_string(numbers[key] - kMostOfAKind) +
                    " more like this)";
  }
  findings = std::move(kept);
}

}  // namespace

Report CheckMib(const Peer& peer, const std::string& moduleName,
                const MibOptions& options) {
  const MibModule module(moduleName, options);
  Manager manager(peer);
  RequireAnAgent(manager, peer);
  Report report;
  report.module = moduleName;
  report.agent = peer.address;
  Served served(module, Walk(manager, module, report));
  CheckGets(manager, served, report);
  CheckEnds(manager, served, report);
  CheckInstances(served, report);
  Counting(served, options, report).All();
  if (options.set) CheckSets(manager, served, report);
  AddNotes(module, report);
  Condense(report.findings);
  return report;
}

}  // namespace snmpsubagent::check
