// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Model.h"

#include <algorithm>
#include <stdexcept>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPSizedCharNodeData.h"
#include "support/Oid.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::CellOid;
using support::ScalarOid;

namespace {

constexpr int kTable = 1;
constexpr std::size_t kMostRows = 40;
// Of the number of a table's second index: rows meet.
constexpr int kSlots = 4;

std::string TrapOid() { return ".1.3.6.1.4.1.32473.99.0.1"; }

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += "  " + line + "\n";
  return text;
}

void RequireSame(const std::vector<std::string>& served,
                 const std::vector<std::string>& known) {
  Require(served == known,
          "served:\n" + Joined(served) + "expected:\n" + Joined(known));
}

}  // namespace

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

Model::Model() {
  const eNodeAccessMode mode = eNodeAccessReadWrite;
  support::AddScalar(1, "number", NetSNMPIntNodeData(&number_, mode));
  support::AddScalar(2, "count", NetSNMPUnsignedIntNodeData(&count_, mode));
  support::AddScalar(3, "truth", NetSNMPBoolNodeData(&truth_, mode));
  support::AddScalar(4, "text", NetSNMPStringNodeData(&text_, mode));
  support::AddScalar(
      5, "label",
      NetSNMPSizedCharNodeData(label_.data(),
                               static_cast<unsigned int>(label_.size()), mode));
  firedNode_ =
      support::AddScalar(6, "fired", NetSNMPIntNodeData(&fired_, mode));
  Oid trapOid{1, 3, 6, 1, 4, 1, 32473, 99, 0, 1};
  trap_ = new NetSNMPTrapNode(trapOid.data(), Length(trapOid), "trap");
  store_ = support::AddStore(kTable, "row", 2, 4,
                             support::AddTable(kTable, "table"));
  for (unsigned long unit = 1; unit <= 5; ++unit) AddRow({unit, 1});
}

void Model::Change() {
  const NetSNMPAgentGuard guard;
  number_ = Random(1000) - 500;
  count_ = static_cast<unsigned int>(Random(1000)) + 4294966000U;
  NetSNMPDataNode::SetNodeData("text", "text " + std::to_string(Random(1000)));
  for (int i = Random(4); i > 0; --i) {
    const Row row{Random(20), Random(kSlots)};
    if (rows_.size() >= kMostRows ||
        (rows_.count(row) != 0 && Random(2) == 0)) {
      RemoveRow(rows_.count(row) != 0 ? row : rows_.begin()->first);
    } else {
      AddRow(row);
    }
  }
}

void Model::Set(const testkit::Manager& manager) {
  const int number = Random(1000);
  const std::string label = "label " + std::to_string(Random(1000));
  const bool truth = Random(2) == 0;
  const testkit::CommandResult result =
      manager.Set({ScalarOid(1), "i", std::to_string(number), ScalarOid(5), "s",
                   label, ScalarOid(3), "i", truth ? "1" : "2"});
  Require(result.Succeeded(), "SET refused: " + result.error);
  // Asked after the SET, it is answered when that is over.
  manager.Get(ScalarOid(1));
  const NetSNMPAgentGuard guard;
  Require(number_ == number && label_.data() == label && truth_ == truth,
          "a SET did not reach the variables");
}

void Model::RequireServed(const testkit::Manager& manager) const {
  RequireSame(manager.Objects(support::ScalarsOid()), Scalars());
  RequireSame(manager.Objects(support::TableOid(kTable)), Cells());
  std::vector<std::string> bulk =
      manager.BulkWalk(support::TableOid(kTable)).Lines();
  bulk.erase(std::remove_if(bulk.begin(), bulk.end(),
                            [](const std::string& line) {
                              return line.find(" = No ") != std::string::npos;
                            }),
             bulk.end());
  RequireSame(bulk, Cells());
}

void Model::Fire() {
  {
    const NetSNMPAgentGuard guard;
    ++fired_;
  }
  Require(trap_->TriggerV2Trap(firedNode_), "a trap was not sent");
}

void Model::RequireReceived(const std::vector<std::string>& received) const {
  Require(received.size() == Fired(), std::to_string(received.size()) +
                                          " traps of " +
                                          std::to_string(fired_) + " arrived");
  for (std::size_t i = 0; i < received.size(); ++i) {
    const std::string end = TrapOid() + "; " + ScalarOid(6) +
                            " = INTEGER: " + std::to_string(i + 1);
    const std::string& line = received[i];
    Require(line.size() >= end.size() &&
                line.compare(line.size() - end.size(), end.size(), end) == 0,
            "a trap arrived as: " + line);
  }
}

int Model::Random(int below) {
  return static_cast<int>(random_() % static_cast<unsigned int>(below));
}

void Model::AddRow(const Row& row) {
  const int number = Random(1000);
  const std::string text(static_cast<std::size_t>(1 + Random(60)), 'x');
  Require(store_->AddRow(Values(Index(Int(static_cast<int>(row.first))),
                                Index(Int(static_cast<int>(row.second))),
                                Int(number), Text(text))),
          "a row was refused");
  rows_[row] = {number, text};
}

void Model::RemoveRow(const Row& row) {
  Require(store_->RemoveRow("row." + std::to_string(row.first) + "." +
                            std::to_string(row.second)),
          "a row was not there");
  rows_.erase(row);
}

std::vector<std::string> Model::Scalars() const {
  const NetSNMPAgentGuard guard;
  return {ScalarOid(1) + " = INTEGER: " + std::to_string(number_),
          ScalarOid(2) + " = Gauge32: " + std::to_string(count_),
          ScalarOid(3) + " = INTEGER: " + (truth_ ? "1" : "2"),
          ScalarOid(4) + " = STRING: \"" + text_ + "\"",
          ScalarOid(5) + " = STRING: \"" + label_.data() + "\"",
          ScalarOid(6) + " = INTEGER: " + std::to_string(fired_)};
}

std::vector<std::string> Model::Cells() const {
  std::vector<std::string> numbers;
  std::vector<std::string> texts;
  for (const auto& row : rows_) {
    const std::string instance = std::to_string(row.first.first) + "." +
                                 std::to_string(row.first.second);
    numbers.push_back(CellOid(kTable, 3, instance) +
                      " = INTEGER: " + std::to_string(row.second.first));
    texts.push_back(CellOid(kTable, 4, instance) + " = STRING: \"" +
                    row.second.second + "\"");
  }
  numbers.insert(numbers.end(), texts.begin(), texts.end());
  return numbers;
}
