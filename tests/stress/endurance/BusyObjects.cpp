// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "BusyObjects.h"

#include <memory>
#include <optional>
#include <utility>

#include "Expectations.h"
#include "QuietOptions.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace snmp = snmpsubagent;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

constexpr char kSubtree[] = ".1.3.6.1.4.1.32473.96";
// In front of all that managers request: see BusyNodes.
constexpr char kPassing[] = "1.3.6.1.4.1.32473.95.";
constexpr unsigned kRowsOfAUnit = 5;
constexpr unsigned kManagersRow = 100;

std::string Scalar(int number) {
  return kSubtree + (".1." + std::to_string(number)) + ".0";
}

std::string Cell(int column, unsigned key) {
  return kSubtree + (".2.1." + std::to_string(column)) + "." +
         std::to_string(key);
}

template <typename T>
std::optional<T> TakeFirst(std::deque<T>& waiting) {
  if (waiting.empty()) return std::nullopt;
  T first = std::move(waiting.front());
  waiting.pop_front();
  return first;
}

}  // namespace

BusyObjects::BusyObjects(const testkit::MasterAgent& master)
    : master_(master),
      agent_("load", QuietOptions(master.AgentXPort())),
      module_(agent_, kSubtree + 1),
      numberObject_(module_, "1.1", number_, snmp::ReadWrite()),
      text_(module_, "1.2", std::string("text"), snmp::ReadWrite()),
      slow_(module_, "1.3", 3, snmp::ReadWrite()),
      slowlyRead_(module_, "1.4",
                  [this](snmp::Later<int> reply) {
                    reads_.push_back(std::move(reply));
                  }),
      rows_(module_, "2"),
      notification_(module_, "0.1") {
  slow_.Apply([this](int, int, snmp::Later<snmp::SetError> reply) {
    applies_.push_back(std::move(reply));
  });
  rows_.Column(2, &Row::number, snmp::ReadCreate())
      .Column(3, &Row::text, snmp::ReadCreate())
      .RowStatus(4);
  rows_.Insert(0, {0, "row"});
}

void BusyObjects::Start() {
  agent_.Start();
  AwaitSession();
}

void BusyObjects::MasterIsGone() {
  Require(WaitFor([&] { return !agent_.Connected(); }, Deadlines::Session()),
          "misses the loss");
}

void BusyObjects::AwaitSession() {
  Require(WaitFor([&] { return module_.IsRegistered(); }, Deadlines::Session()),
          "does not register again");
}

void BusyObjects::AddApplication(Workers& workers) {
  for (const char* text : {"one thread", "another thread"}) {
    workers.Add(std::string("sets values: ") + text,
                [this, text] { SetValues(text); });
  }
  for (unsigned unit : {1U, 2U}) {
    workers.Add("changes rows: " + std::to_string(unit),
                [this, unit] { ChangeRows(unit); });
  }
  for (const char* oid : {"1", "2"}) {
    workers.Add(std::string("builds and destroys: ") + oid,
                [this, oid] { BuildAndDestroy(kPassing + std::string(oid)); });
  }
  workers.Add("sends notifications", [this] { Send(); });
  workers.Add("answers", [this] { AnswerOne(); });
}

void BusyObjects::AddManagers(Workers& workers) {
  const testkit::Manager& manager = master_.Manager();
  workers.Add("walks", [&] { manager.Walk(kSubtree + std::string(".1")); });
  workers.Add("reads in bulk",
              [&] { manager.BulkWalk(kSubtree + std::string(".2")); });
  workers.Add("sets", [&] {
    manager.Set({Scalar(1), "i", "30", Scalar(2), "s", "a manager"});
  });
  workers.Add("waits for a SET", [&] { manager.Set({Scalar(3), "i", "4"}); });
  workers.Add("creates and destroys rows", [&] {
    manager.Set({Cell(4, kManagersRow), "i", "4"});
    manager.Set({Cell(4, kManagersRow), "i", "6"});
  });
}

void BusyObjects::SetValues(const std::string& text) {
  const snmp::AgentLock lock = agent_.Lock();
  text_.Set(text);
  numberObject_.Set(1);
  Require(text_.Get() == text && number_ == 1, "a value was not set");
}

void BusyObjects::ChangeRows(unsigned unit) {
  const unsigned first = unit * kRowsOfAUnit;
  for (unsigned key = first; key < first + kRowsOfAUnit; ++key) {
    Require(rows_.Insert(key, {}), "a row was refused");
  }
  for (unsigned key = first; key < first + kRowsOfAUnit; ++key) {
    Require(rows_.Erase(key), "a row was not there");
  }
}

void BusyObjects::BuildAndDestroy(const std::string& oid) {
  auto module = std::make_unique<snmp::Module>(agent_, oid);
  const snmp::Scalar first(*module, "1", 1);
  const snmp::Scalar second(*module, "2", [] { return 2; });
  const snmp::Table table(*module, "3", rows_);
  // What is in a module may outlive it.
  module.reset();
}

void BusyObjects::AnswerOne() {
  std::optional<snmp::Later<snmp::SetError>> apply;
  std::optional<snmp::Later<int>> read;
  {
    const snmp::AgentLock lock = agent_.Lock();
    apply = TakeFirst(applies_);
    read = TakeFirst(reads_);
  }
  if (apply) apply->Answer(snmp::SetError::None);
  if (read) read->Answer(4);
}

void BusyObjects::Send() {
  notification_.Send({numberObject_},
                     [this](const snmp::NotificationResult&) { ++outcomes_; });
  ++sent_;
}

void BusyObjects::RequireServed() {
  rows_.Erase(kManagersRow);
  numberObject_.Set(42);
  text_.Set("settled");
  slow_.Set(3);
  Workers workers;
  workers.Add("answers", [this] { AnswerOne(); });
  AwaitWalked(
      master_.Manager(), kSubtree,
      {Scalar(1) + " = INTEGER: 42", Scalar(2) + " = STRING: \"settled\"",
       Scalar(3) + " = INTEGER: 3", Scalar(4) + " = INTEGER: 4",
       Cell(2, 0) + " = INTEGER: 0", Cell(3, 0) + " = STRING: \"row\"",
       Cell(4, 0) + " = INTEGER: 1"});
  agent_.Stop();
  Require(outcomes_ == sent_, std::to_string(outcomes_) + " outcomes of " +
                                  std::to_string(sent_) + " notifications");
}
