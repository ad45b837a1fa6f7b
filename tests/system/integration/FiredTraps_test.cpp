// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeRegistry.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/TestSubAgent.h"
#include "support/Values.h"
#include "testkit/MasterAgent.h"
#include "testkit/TrapReceiver.h"

using support::AddIntScalar;
using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::NodeRegistry;
using support::ScalarOid;
using support::TestSubAgent;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::MasterAgent;
using testkit::TrapReceiver;

namespace {

constexpr char kAlarmOid[] = ".1.3.6.1.4.1.32473.98.0.1";

// The traps that value changes fire, counted exactly.
class FiredTraps : public testing::Test {
 protected:
  FiredTraps() : subAgent_(master_.AgentXPort()) {
    std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 98, 0, 1};
    alarm_ = new NetSNMPTrapNode(oid.data(), oid.size(), "alarm");
    EXPECT_TRUE(subAgent_.StartAndConnect());
  }

  ~FiredTraps() override { subAgent_.Stop(); }

  // The object of each trap that was fired so far. Sends one more, whose
  // arrival shows that all have arrived.
  std::vector<std::string> Fired() {
    {
      const NetSNMPAgentGuard guard;
      alarm_->TriggerV2Trap(AddIntScalar(9, "last", 99));
    }
    const std::string last = ScalarOid(9) + " = INTEGER: 99";
    std::vector<std::string> objects;
    for (std::size_t count = 1; objects.empty() || objects.back() != last;
         ++count) {
      if (!receiver_.WaitForCount(count)) return {"the last trap is missing"};
      objects.push_back(ObjectOf(receiver_.Received()[count - 1]));
    }
    objects.pop_back();
    return objects;
  }

  // What follows the OID of the trap.
  static std::string ObjectOf(const std::string& received) {
    const std::string head = std::string("OID: ") + kAlarmOid + "; ";
    return received.substr(received.find(head) + head.size());
  }

  void AddFiringScalar(void (*callback)(NetSNMPDataNode*)) {
    std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 99, 1, 0};
    new NetSNMPDataNode(oid.data(), oid.size(), "firing",
                        NetSNMPIntNodeData(&number_, eNodeAccessReadWrite),
                        callback, "alarm");
  }

  // A table whose rows have the column 2, speed.
  NetSNMPTableEntryNode* AddFans() {
    return AddStore(
        1, "fans", 1, 2,
        AddTable(
            1, "fanTable", [](NetSNMPDataNode*) { ADD_FAILURE(); }, "alarm"));
  }

  void SetSpeed(const std::string& speed) {
    const std::string oid = CellOid(1, 2, "1");
    EXPECT_TRUE(master_.Manager().Set({oid, "i", speed}).Succeeded());
    // Answered by the subagent when it has done with the SET.
    master_.Manager().Get(oid);
  }

  int number_ = 1;
  TrapReceiver receiver_;
  MasterAgent master_{receiver_.SinkConfiguration()};
  TestSubAgent subAgent_;
  NodeRegistry registry_;
  NetSNMPTrapNode* alarm_;
};

TEST_F(FiredTraps, AreTwoForEachChangeOfAScalar) {
  AddFiringScalar(nullptr);
  NetSNMPDataNode::SetNodeData("firing", 5);
  NetSNMPDataNode::SetNodeData("firing", 6);
  const std::string five = ScalarOid(1) + " = INTEGER: 5";
  const std::string six = ScalarOid(1) + " = INTEGER: 6";
  EXPECT_THAT(Fired(), ElementsAre(five, five, six, six));
}

TEST_F(FiredTraps, AreNoneForAScalarWithACallback) {
  static int calls = 0;
  AddFiringScalar([](NetSNMPDataNode*) { ++calls; });
  NetSNMPDataNode::SetNodeData("firing", 5);
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(Fired(), IsEmpty());
}

TEST_F(FiredTraps, CarryTheNewValueOfACellOverAVariable) {
  {
    auto* const store = AddFans();
    const NetSNMPAgentGuard guard;
    store->AddRow(Values(Index(Int(1)),
                         NetSNMPIntNodeData(&number_, eNodeAccessReadWrite)));
  }
  SetSpeed("15");
  const std::string fired = CellOid(1, 2, "1") + " = INTEGER: 15";
  EXPECT_THAT(Fired(), ElementsAre(fired, fired));
}

TEST_F(FiredTraps, CarryTheOldValueOfACopiedCell) {
  {
    auto* const store = AddFans();
    const NetSNMPAgentGuard guard;
    store->AddRow(Values(Index(Int(1)), Int(10, eNodeAccessReadWrite)));
  }
  SetSpeed("15");
  const std::string fired = CellOid(1, 2, "1") + " = INTEGER: 10";
  EXPECT_THAT(Fired(), ElementsAre(fired, fired));
}

TEST_F(FiredTraps, AreNoneForReadsAndRefusedSets) {
  {
    auto* const store = AddFans();
    const NetSNMPAgentGuard guard;
    store->AddRow(Values(Index(Int(1)), Int(10)));
  }
  const std::string oid = CellOid(1, 2, "1");
  EXPECT_FALSE(master_.Manager().Set({oid, "i", "15"}).Succeeded());
  master_.Manager().Walk(support::TableOid(1));
  EXPECT_THAT(Fired(), IsEmpty());
}

}  // namespace
