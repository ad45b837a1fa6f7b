// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/SetCheck.h"

#include <algorithm>
#include <optional>

#include "check/Probes.h"
#include "check/RowCheck.h"

namespace snmpsubagent::check {
namespace {

std::string ErrorNames(const std::vector<long>& errors) {
  std::string names;
  for (const long error : errors) {
    names += (names.empty() ? "" : " or ") + ErrorName(error);
  }
  return names;
}

// Refusals that are about the present state of the agent, not about the value.
bool DependsOnState(const Response& response) {
  return response.error == SNMP_ERR_INCONSISTENTVALUE ||
         response.error == SNMP_ERR_RESOURCEUNAVAILABLE;
}

// Zero octets at the end of BITS say nothing (RFC 2578, 7.1.4).
bool IsSame(const Syntax& syntax, const Value& a, const Value& b) {
  if (syntax.base != Base::Bits || a.Type() != b.Type()) return a == b;
  const std::string zero(1, '\0');
  const auto significant = [&zero](const Value& value) {
    return value.Bytes().find_last_not_of(zero) + 1;
  };
  return a.Bytes().substr(0, significant(a)) ==
         b.Bytes().substr(0, significant(b));
}

class SetCheck {
 public:
  SetCheck(Manager& manager, const Served& served, Report& report)
      : manager_(manager), served_(served), report_(report) {}

  void All() {
    const MibModule& module = served_.module;
    for (const MibObject& object : module.Objects()) {
      if (!object.table) Object(object, FirstInstance(object));
    }
    for (const MibTable& table : module.Tables()) Table(table);
    if (sets_ > 0 && sets_ == noAccess_) {
      throw CannotCheck(
          "each SET is answered with noAccess: the community may "
          "not write");
    }
  }

 private:
  // A table without rows gets one for the time of the SETs.
  void Table(const MibTable& table) {
    RowCheck rows(manager_, served_, table, report_);
    rows.All();
    const std::optional<Oid> made =
        rows.IsEmpty() ? rows.MakeForSets() : std::nullopt;
    for (const std::size_t number : table.columns) {
      const MibObject& column = served_.module.Objects()[number];
      Object(column, made ? Read(column.oid + *made) : FirstInstance(column));
    }
    if (made) rows.Destroy(*made);
  }

  std::optional<Varbind> FirstInstance(const MibObject& object) {
    const std::vector<std::size_t>& instances = served_.Of(object).instances;
    if (instances.empty()) return std::nullopt;
    return Read(served_.all[instances.front()].name);
  }

  // Nothing if there is no such instance.
  std::optional<Varbind> Read(const Oid& name) {
    const Response response = manager_.Get({name});
    if (!response.Succeeded() || response.varbinds.size() != 1 ||
        response.varbinds[0].value.IsException()) {
      return std::nullopt;
    }
    return response.varbinds[0];
  }

  void Object(const MibObject& object, const std::optional<Varbind>& at) {
    if (!object.Readable() || object.syntax.base == Base::Unknown) return;
    if (!at) {
      AddUndecided(object);
      return;
    }
    for (const Probe& probe : RefusedProbes(object, at->value)) {
      RefusedSet(object, *at, probe);
    }
    if (!object.Writable()) return;
    for (const Probe& probe : GoodProbes(object, at->value)) {
      GoodSet(object, *at, probe);
    }
    Restore(object, *at);
  }

  // Obsolete objects are not expected, and so aren't SETs of them.
  void AddUndecided(const MibObject& object) {
    if (object.obsolete) return;
    const Value none = Value::OfNumber(object.syntax.AsnType(), 0);
    report_.totals.refusedSets.AddUndecided(RefusedProbes(object, none).size());
    if (!object.Writable()) return;
    report_.totals.goodSets.AddUndecided(GoodProbes(object, none).size());
  }

  void RefusedSet(const MibObject& object, const Varbind& at,
                  const Probe& probe) {
    const Response response = Set(at.name, probe.value);
    const bool right =
        response.answered &&
        std::count(probe.errors.begin(), probe.errors.end(), response.error);
    report_.totals.refusedSets.Add(right);
    if (right) return;
    const std::string what =
        "a SET to " + ToText(probe.value) + ", though " + probe.what + ", ";
    if (response.Succeeded()) {
      Add(Fault::RefusedSet, object, at,
          what + "succeeds instead of " + ErrorNames(probe.errors));
      Restore(object, at);
    } else {
      Add(response.answered ? Fault::SetError : Fault::NoAnswer, object, at,
          what + "gets " + ErrorText(response) + " instead of " +
              ErrorNames(probe.errors));
    }
  }

  void GoodSet(const MibObject& object, const Varbind& at, const Probe& probe) {
    const Response response = Set(at.name, probe.value);
    if (DependsOnState(response)) {
      report_.totals.goodSets.AddUndecided();
      return;
    }
    const std::string what = "a SET to " + probe.what + " ";
    if (!response.Succeeded()) {
      report_.totals.goodSets.Add(false);
      Add(response.answered ? Fault::GoodSet : Fault::NoAnswer, object, at,
          what + "gets " + ErrorText(response));
      return;
    }
    const std::optional<Varbind> now = Read(at.name);
    const bool right = now && IsSame(object.syntax, now->value, probe.stored);
    report_.totals.goodSets.Add(right);
    if (right) return;
    Add(Fault::StoredValue, object, at,
        what + "succeeds, and then it has " +
            (now ? ToText(now->value) : "no value"));
  }

  // A TestAndIncr only ever goes up.
  void Restore(const MibObject& object, const Varbind& at) {
    if (object.syntax.convention == "TestAndIncr") return;
    std::optional<Varbind> now = Read(at.name);
    if (now && IsSame(object.syntax, now->value, at.value)) return;
    const Response response = Set(at.name, at.value);
    now = Read(at.name);
    if (now && IsSame(object.syntax, now->value, at.value)) return;
    Add(Fault::Restoration, object, at,
        "it had " + ToText(at.value) + " and now has " +
            (now ? ToText(now->value) : "no value") +
            ": writing it back gets " + ErrorText(response));
  }

  Response Set(const Oid& name, const Value& value) {
    Response response = manager_.Set({{name, value}});
    ++sets_;
    if (response.error == SNMP_ERR_NOACCESS) ++noAccess_;
    return response;
  }

  void Add(Fault fault, const MibObject& object, const Varbind& at,
           const std::string& text) {
    report_.Add(fault, object.name, ToText(at.name), text);
  }

  Manager& manager_;
  const Served& served_;
  Report& report_;
  std::size_t sets_ = 0;
  std::size_t noAccess_ = 0;
};

}  // namespace

void CheckSets(Manager& manager, const Served& served, Report& report) {
  SetCheck(manager, served, report).All();
}

}  // namespace snmpsubagent::check
