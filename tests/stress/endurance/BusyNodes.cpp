// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "BusyNodes.h"

#include <vector>

#include "Expectations.h"
#include "NetSNMPAgentGuard.h"
#include "support/Oid.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::CellOid;
using support::ScalarOid;

namespace {

constexpr int kTable = 1;
constexpr int kBuilders = 2;

// The OIDs of these nodes are in front of all that managers request: the master
// agent (Net-SNMP 5.9) fails when an object is withdrawn while it is in the
// middle of a walk over it, or beyond its end into the next registration.
void BuildAndDelete(int thread) {
  std::vector<NetSNMPDataNode*> nodes;
  for (int number = 5 * thread; number < 5 * thread + 5; ++number) {
    Oid oid{1, 3, 6, 1, 4, 1, 32473, 97, static_cast<unsigned long>(number), 0};
    nodes.push_back(new NetSNMPDataNode(oid.data(), Length(oid),
                                        "passing" + std::to_string(number),
                                        Int(number), nullptr, ""));
  }
  for (NetSNMPDataNode* node : nodes) delete node;
}

}  // namespace

BusyNodes::BusyNodes(const testkit::MasterAgent& master)
    : master_(master), subAgent_(master.AgentXPort()) {
  support::AddScalar(1, "number",
                     NetSNMPIntNodeData(&number_, eNodeAccessReadWrite));
  support::AddScalar(2, "text",
                     NetSNMPStringNodeData(&text_, eNodeAccessReadWrite));
  fired_ = support::AddIntScalar(3, "fired", 3);
  store_ = support::AddStore(kTable, "row", 2, 4,
                             support::AddTable(kTable, "table"));
  AddRow(0, 0);
  Oid oid{1, 3, 6, 1, 4, 1, 32473, 99, 0, 1};
  trap_ = new NetSNMPTrapNode(oid.data(), Length(oid), "trap");
}

void BusyNodes::Start() {
  Require(subAgent_.StartAndConnect(), "does not connect");
}

void BusyNodes::MasterIsGone() { connections_ = subAgent_.Connections(); }

void BusyNodes::AwaitSession() {
  Require(subAgent_.WaitForConnections(connections_ + 1),
          "does not connect again");
}

void BusyNodes::RequireServed() {
  {
    const NetSNMPAgentGuard guard;
    number_ = 42;
    text_ = "settled";
  }
  const testkit::Manager& manager = master_.Manager();
  AwaitWalked(manager, support::TableOid(kTable),
              {CellOid(kTable, 3, "0.0") + " = INTEGER: 0",
               CellOid(kTable, 4, "0.0") + " = STRING: \"row\""});
  AwaitWalked(
      manager, support::ScalarsOid(),
      {ScalarOid(1) + " = INTEGER: 42", ScalarOid(2) + " = STRING: \"settled\"",
       ScalarOid(3) + " = INTEGER: 3"});
}

void BusyNodes::AddApplication(Workers& workers) {
  for (const char* text : {"one thread", "another thread"}) {
    workers.Add(std::string("sets values: ") + text,
                [this, text] { SetValues(text); });
  }
  for (int unit : {1, 2}) {
    workers.Add("changes rows: " + std::to_string(unit), [this, unit] {
      for (int slot = 0; slot < 5; ++slot) AddRow(unit, slot);
      for (int slot = 0; slot < 5; ++slot) RemoveRow(unit, slot);
    });
  }
  for (int thread = 0; thread < kBuilders; ++thread) {
    workers.Add("builds and deletes: " + std::to_string(thread),
                [thread] { BuildAndDelete(thread); });
  }
  workers.Add("fires traps", [this] { trap_->TriggerV2Trap(fired_); });
  workers.Add("asks for the connection", [this] { subAgent_.Connected(); });
}

void BusyNodes::AddManagers(Workers& workers) {
  const testkit::Manager& manager = master_.Manager();
  workers.Add("walks", [&] { manager.Walk(support::ScalarsOid()); });
  workers.Add("reads in bulk",
              [&] { manager.BulkWalk(support::TableOid(kTable)); });
  workers.Add("sets", [&] {
    manager.Set({ScalarOid(1), "i", "30", ScalarOid(2), "s", "a manager"});
  });
}

void BusyNodes::SetValues(const char* text) {
  const NetSNMPAgentGuard guard;
  NetSNMPDataNode::SetNodeData("text", std::string(text));
  NetSNMPDataNode::SetNodeData("number", 1);
  Require(text_ == text && number_ == 1, "a value was not set");
}

void BusyNodes::AddRow(int unit, int slot) {
  const NetSNMPAgentGuard guard;
  Require(store_->AddRow(Values(Index(Int(unit)), Index(Int(slot)), Int(unit),
                                Text("row"))),
          "a row was refused");
}

void BusyNodes::RemoveRow(int unit, int slot) {
  const NetSNMPAgentGuard guard;
  Require(store_->RemoveRow("row." + std::to_string(unit) + "." +
                            std::to_string(slot)),
          "a row was not there");
}
