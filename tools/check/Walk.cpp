// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Walk.h"

#include <algorithm>

namespace snmpsubagent::check {
namespace {

constexpr long kMaxRepetitions = 50;
// An agent that lets so many requests go unanswered is not asked any more: each
// costs the whole timeout.
constexpr int kMostUnanswered = 3;

class Walker {
 public:
  Walker(Manager& manager, const MibModule& module, Report& report)
      : manager_(manager), module_(module), report_(report) {}

  std::vector<Varbind> All() {
    for (const Oid& root : module_.Roots()) Subtree(root);
    return std::move(found_);
  }

 private:
  enum class Step { GoOn, Skip, End };

  void Subtree(const Oid& root) {
    at_ = root;
    for (;;) {
      const Step step = Take(root, manager_.GetBulk(at_, kMaxRepetitions));
      if (step == Step::End) return;
      if (step == Step::Skip && !SkipToNextObject(root)) return;
    }
  }

  Step Take(const Oid& root, const Response& response) {
    if (!response.Succeeded() || response.varbinds.empty()) {
      Add(Fault::NoAnswer, "behind it, GETBULK gets " + ErrorText(response));
      CountUnanswered(response);
      return Step::Skip;
    }
    for (const Varbind& varbind : response.varbinds) {
      if (varbind.value.Type() == SNMP_ENDOFMIBVIEW) return Step::End;
      if (varbind.name <= at_) {
        Add(Fault::Order, "GETNEXT shows " + ToText(varbind.name) +
                              ", which is not behind it");
        return Step::Skip;
      }
      if (!IsAtOrBelow(varbind.name, root)) return Step::End;
      at_ = varbind.name;
      found_.push_back(varbind);
    }
    return Step::GoOn;
  }

  void CountUnanswered(const Response& response) {
    if (response.answered || ++unanswered_ < kMostUnanswered) return;
    throw CannotCheck("the agent stopped answering at " + ToText(at_));
  }

  bool SkipToNextObject(const Oid& root) {
    const auto& objects = module_.Objects();
    const auto next = std::find_if(
        objects.begin(), objects.end(),
        [this](const MibObject& object) { return object.oid > at_; });
    if (next == objects.end() || !IsAtOrBelow(next->oid, root)) return false;
    at_ = next->oid;
    return true;
  }

  void Add(Fault fault, const std::string& text) {
    const MibObject* const object = module_.ObjectOf(at_);
    report_.Add(fault, object ? object->name : "", ToText(at_), text);
  }

  Manager& manager_;
  const MibModule& module_;
  Report& report_;
  Oid at_;  // the name that was reached
  std::vector<Varbind> found_;
  int unanswered_ = 0;
};

}  // namespace

std::vector<Varbind> Walk(Manager& manager, const MibModule& module,
                          Report& report) {
  return Walker(manager, module, report).All();
}

}  // namespace snmpsubagent::check
