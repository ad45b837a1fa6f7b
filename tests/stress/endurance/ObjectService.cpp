// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ObjectService.h"

#include "Expectations.h"
#include "QuietOptions.h"
#include "support/Answers.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace snmp = snmpsubagent;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

constexpr char kSubtree[] = ".1.3.6.1.4.1.32473.97";
// What the valve does not take, as it finds out when it is to move.
constexpr int kStuck = 13;

std::string Name(int number) {
  return kSubtree + ("." + std::to_string(number)) + ".0";
}

}  // namespace

ObjectService::ObjectService(int masterPort)
    : agent_("soak", QuietOptions(masterPort)),
      module_(agent_, kSubtree + 1),
      numberObject_(module_, "1", number_, snmp::ReadWrite().Range(0, 999)),
      countObject_(module_, "2", count_),
      text_(module_, "3", std::string("text"), snmp::ReadWrite().Size(0, 40)),
      low_(module_, "4", 10, snmp::ReadWrite()),
      high_(module_, "5", 20, snmp::ReadWrite()),
      valve_(module_, "6", 0, snmp::ReadWrite().Range(0, 100)),
      sentObject_(module_, "7", sent_),
      notification_(module_, "0.1"),
      rows_(module_, random_) {
  valve_.Apply([](int after) { return after != kStuck; });
  module_.Check([this](const snmp::SetChange& change) {
    return change.After(low_) < change.After(high_)
               ? snmp::SetError::None
               : snmp::SetError::InconsistentValue;
  });
}

void ObjectService::Start() {
  agent_.Start();
  AwaitSession();
}

void ObjectService::AwaitLoss() {
  Require(WaitFor([&] { return !agent_.Connected(); }, Deadlines::Session()),
          "the objects miss the loss");
}

void ObjectService::AwaitSession() {
  Require(WaitFor([&] { return module_.IsRegistered(); }, Deadlines::Session()),
          "the objects are not served again");
}

void ObjectService::Change() {
  {
    const snmp::AgentLock lock = agent_.Lock();
    number_ = random_.Between(0, 999);
  }
  count_ = random_.Below(1000) + 4294966000U;
  text_.Set("text " + std::to_string(random_.Below(1000)));
  rows_.Change();
}

void ObjectService::Set(const testkit::Manager& manager) {
  SetRightly(manager);
  SetWrongly(manager);
  for (int i = 0; i < 3; ++i) rows_.Set(manager, done_);
}

void ObjectService::SetRightly(const testkit::Manager& manager) {
  const int number = random_.Between(0, 999);
  const std::string text = "set " + std::to_string(random_.Below(1000));
  const int low = random_.Between(0, 999);
  const int high = low + random_.Between(1, 10);
  const int valve = random_.Between(kStuck + 1, 100);
  const std::string error = support::SetAt(
      manager, {Name(1), "i", std::to_string(number), Name(3), "s", text,
                Name(4), "i", std::to_string(low), Name(5), "i",
                std::to_string(high), Name(6), "i", std::to_string(valve)});
  Require(error == "None", "a SET was refused: " + error);
  ++done_.sets;
  const snmp::AgentLock lock = agent_.Lock();
  Require(number_ == number && text_.Get() == text && low_.Get() == low &&
              high_.Get() == high && valve_.Get() == valve,
          "a SET did not reach the variables");
}

void ObjectService::SetWrongly(const testkit::Manager& manager) {
  struct Wrong {
    std::vector<std::string> words;
    std::string error;
  };
  const std::string high = std::to_string(high_.Get());
  const std::vector<Wrong> all{
      {{Name(6), "i", std::to_string(kStuck)}, "commitFailed " + Name(6)},
      {{Name(6), "i", "101"}, "wrongValue " + Name(6)},
      {{Name(6), "s", "1"}, "wrongType " + Name(6)},
      {{Name(2), "u", "1"}, "notWritable " + Name(2)},
      // It is the SET as a whole that the module does not take.
      {{Name(4), "i", high}, "inconsistentValue " + Name(3)},
  };
  const Wrong& wrong = random_.Element(all);
  // What comes first could be done, and would be undone.
  std::vector<std::string> words{Name(3), "s", "undone"};
  words.insert(words.end(), wrong.words.begin(), wrong.words.end());
  const std::string error = support::SetAt(manager, words);
  Require(error == wrong.error,
          "a SET got " + error + ", expected: " + wrong.error);
  ++done_.refused;
}

void ObjectService::Notify() {
  const snmp::AgentLock lock = agent_.Lock();
  ++sent_;
  notification_.Send({sentObject_});
  ++done_.notifications;
}

void ObjectService::RequireServed(const testkit::Manager& manager) const {
  std::vector<std::string> lines = Scalars();
  const std::vector<std::string> cells = rows_.Cells();
  lines.insert(lines.end(), cells.begin(), cells.end());
  RequireWalked(manager, kSubtree, lines);
}

void ObjectService::RequireNotified(
    const std::vector<std::string>& received) const {
  RequireNumbered(received, std::string(kSubtree) + ".0.1", Name(7),
                  done_.notifications);
}

std::vector<std::string> ObjectService::Scalars() const {
  const auto integer = [](int number, int value) {
    return Name(number) + " = INTEGER: " + std::to_string(value);
  };
  const snmp::AgentLock lock = agent_.Lock();
  return {integer(1, number_),
          Name(2) + " = Gauge32: " + std::to_string(count_),
          Name(3) + " = STRING: \"" + text_.Get() + "\"",
          integer(4, low_.Get()),
          integer(5, high_.Get()),
          integer(6, valve_.Get()),
          integer(7, sent_)};
}
