// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/InstanceCheck.h"

#include <algorithm>

#include "check/IndexDecoder.h"

namespace snmpsubagent::check {
namespace {

class InstanceCheck {
 public:
  InstanceCheck(Served& served, Report& report)
      : served_(served), report_(report) {}

  void All() {
    for (std::size_t i = 0; i < served_.all.size(); ++i) {
      const Varbind& varbind = served_.all[i];
      const MibObject* const object = served_.module.ObjectOf(varbind.name);
      if (object) {
        Compare(i, *object);
      } else if (!served_.module.IsOfAnotherModule(varbind.name)) {
        AddForeign(i);
      } else {
        continue;
      }
      report_.totals.instances.Add(!served_.faulty[i]);
    }
  }

 private:
  void Compare(std::size_t i, const MibObject& object) {
    const Varbind& varbind = served_.all[i];
    if (!object.Readable()) {
      served_.Add(report_, Fault::Access, i,
                  object.access == Access::ForNotify
                      ? "it is readable, and should be accessible-for-notify"
                      : "it is readable, and should be not-accessible");
    }
    if (const auto mismatch = object.syntax.Check(varbind.value)) {
      served_.Add(report_, mismatch->fault, i, mismatch->text);
    }
    const Oid identifier(
        varbind.name.begin() + static_cast<std::ptrdiff_t>(object.oid.size()),
        varbind.name.end());
    if (object.table) {
      CompareIndex(i, object, identifier);
    } else if (identifier != Oid{0}) {
      served_.Add(report_, Fault::Instance, i,
                  "a scalar has the one instance .0");
    }
  }

  void CompareIndex(std::size_t i, const MibObject& object,
                    const Oid& identifier) {
    const MibTable& table = served_.module.Tables()[*object.table];
    if (table.indexes.empty()) return;
    const DecodedIndex decoded = DecodeIndex(table, identifier);
    if (!decoded.error.empty()) {
      served_.Add(report_, Fault::Instance, i,
                  "the instance identifier " + ToText(identifier) +
                      " is none of the INDEX: " + decoded.error);
      return;
    }
    for (std::size_t k = 0; k < table.indexes.size(); ++k) {
      const Value& value = served_.all[i].value;
      if (table.indexes[k].oid == object.oid && value != decoded.values[k]) {
        served_.Add(report_, Fault::IndexValue, i,
                    "the value is " + ToText(value) +
                        ", the instance identifier says " +
                        ToText(decoded.values[k]));
      }
    }
  }

  // One finding for all instances of what would be one object.
  void AddForeign(std::size_t i) {
    const Oid& name = served_.all[i].name;
    served_.faulty[i] = true;
    if (!foreign_.empty() && IsAtOrBelow(name, foreign_)) return;
    const std::size_t size = std::min(name.size(), LongestShared(name) + 1);
    foreign_.assign(name.begin(),
                    name.begin() + static_cast<std::ptrdiff_t>(size));
    report_.Add(Fault::Foreign, "", ToText(foreign_),
                "the module has no such object; it has the instance " +
                    ToText(name) + " here");
  }

  // How many sub-identifiers the name has in common with an object, at most.
  std::size_t LongestShared(const Oid& name) const {
    std::size_t longest = 0;
    for (const MibObject& object : served_.module.Objects()) {
      const auto end = std::mismatch(name.begin(), name.end(),
                                     object.oid.begin(), object.oid.end());
      longest =
          std::max(longest, static_cast<std::size_t>(end.first - name.begin()));
    }
    return longest;
  }

  Served& served_;
  Report& report_;
  Oid foreign_;  // the last subtree without an object
};

}  // namespace

void CheckInstances(Served& served, Report& report) {
  InstanceCheck(served, report).All();
}

}  // namespace snmpsubagent::check
