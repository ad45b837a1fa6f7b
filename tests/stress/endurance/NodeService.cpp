// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NodeService.h"

#include "Expectations.h"
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

}  // namespace

NodeService::NodeService(int masterPort) : subAgent_(masterPort) {
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

void NodeService::Start() {
  subAgent_.RegisterSubAgentCallback("soak", &receiver_);
  Require(subAgent_.StartAndConnect(), "the node classes do not connect");
}

void NodeService::AwaitLoss() {
  states_.push_back(0);
  Require(receiver_.WaitForStates(states_), "the node classes miss the loss");
}

void NodeService::AwaitSession() {
  states_.push_back(1);
  Require(subAgent_.WaitForConnections(++sessions_) &&
              receiver_.WaitForStates(states_),
          "the node classes do not connect again");
}

void NodeService::Change() {
  const NetSNMPAgentGuard guard;
  number_ = random_.Between(-500, 499);
  count_ = random_.Below(1000) + 4294966000U;
  NetSNMPDataNode::SetNodeData("text",
                               "text " + std::to_string(random_.Below(1000)));
  for (auto i = random_.Below(4); i > 0; --i) {
    const Row row{random_.Below(20), random_.Below(kSlots)};
    if (rows_.size() >= kMostRows ||
        (rows_.count(row) != 0 && random_.OneIn(2))) {
      RemoveRow(rows_.count(row) != 0 ? row : rows_.begin()->first);
    } else {
      AddRow(row);
    }
  }
}

void NodeService::Set(const testkit::Manager& manager) {
  const int number = random_.Between(0, 999);
  const std::string label = "label " + std::to_string(random_.Below(1000));
  const bool truth = random_.OneIn(2);
  const testkit::CommandResult result =
      manager.Set({ScalarOid(1), "i", std::to_string(number), ScalarOid(5), "s",
                   label, ScalarOid(3), "i", truth ? "1" : "2"});
  Require(result.Succeeded(), "SET refused: " + result.error);
  // Asked after the SET, it is answered when that is over.
  manager.Get(ScalarOid(1));
  const NetSNMPAgentGuard guard;
  Require(number_ == number && label_.data() == label && truth_ == truth,
          "a SET did not reach the variables");
  ++done_.sets;
}

void NodeService::RequireServed(const testkit::Manager& manager) const {
  RequireWalked(manager, support::ScalarsOid(), Scalars());
  RequireWalked(manager, support::TableOid(kTable), Cells());
}

void NodeService::Notify() {
  {
    const NetSNMPAgentGuard guard;
    ++fired_;
  }
  Require(trap_->TriggerV2Trap(firedNode_), "a trap was not sent");
  ++done_.notifications;
}

void NodeService::RequireNotified(
    const std::vector<std::string>& received) const {
  RequireNumbered(received, TrapOid(), ScalarOid(6), done_.notifications);
}

void NodeService::AddRow(const Row& row) {
  const int number = random_.Between(0, 999);
  const std::string text(1 + random_.Below(60), 'x');
  Require(store_->AddRow(Values(Index(Int(static_cast<int>(row.first))),
                                Index(Int(static_cast<int>(row.second))),
                                Int(number), Text(text))),
          "a row was refused");
  rows_[row] = {number, text};
}

void NodeService::RemoveRow(const Row& row) {
  Require(store_->RemoveRow("row." + std::to_string(row.first) + "." +
                            std::to_string(row.second)),
          "a row was not there");
  rows_.erase(row);
}

std::vector<std::string> NodeService::Scalars() const {
  const NetSNMPAgentGuard guard;
  return {ScalarOid(1) + " = INTEGER: " + std::to_string(number_),
          ScalarOid(2) + " = Gauge32: " + std::to_string(count_),
          ScalarOid(3) + " = INTEGER: " + (truth_ ? "1" : "2"),
          ScalarOid(4) + " = STRING: \"" + text_ + "\"",
          ScalarOid(5) + " = STRING: \"" + label_.data() + "\"",
          ScalarOid(6) + " = INTEGER: " + std::to_string(fired_)};
}

std::vector<std::string> NodeService::Cells() const {
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
