// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "support/ConnectionReceiver.h"
#include "support/NodeRegistry.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/TestSubAgent.h"
#include "support/Values.h"
#include "testkit/MasterAgent.h"

using support::AddDataSetTable;
using support::AddIntScalar;
using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::ConnectionReceiver;
using support::NodeRegistry;
using support::ScalarOid;
using support::TestSubAgent;
using testing::ElementsAre;
using testkit::MasterAgent;

namespace {

// A subagent that unregisters all nodes first whenever the session comes up.
class ReregisteringSubAgent : public TestSubAgent {
 public:
  using TestSubAgent::TestSubAgent;
  void OnSubAgentConnected() override {
    NetSNMPNode::ReregisterMibs();
    TestSubAgent::OnSubAgentConnected();
  }
};

// The nodes of a subagent whose master agent is restarted.
template <typename SubAgent>
class AfterRestart : public testing::Test {
 protected:
  AfterRestart() : subAgent_(master_.AgentXPort()) {
    subAgent_.RegisterSubAgentCallback("test", &receiver_);
    AddIntScalar(1, "scalar", 30);
    AddStore(1, "fans", 1, 2, AddTable(1, "fanTable"))
        ->AddRow(Values(Index(Int(1)), Int(10)));
    auto* const events =
        AddDataSetTable(2, "events", Values(Unsigned(0), Int(0)));
    EXPECT_TRUE(subAgent_.StartAndConnect());
    events->AddRow(Values(Unsigned(1), Int(20)));
  }

  ~AfterRestart() override { subAgent_.Stop(); }

  void RestartMaster() {
    master_.End();
    ASSERT_TRUE(receiver_.WaitForStates({1, 0}));
    master_.Start();
    ASSERT_TRUE(receiver_.WaitForStates({1, 0, 1}));
    // The agent library registers everything again before it releases the lock.
    const NetSNMPAgentGuard guard;
  }

  std::vector<std::string> Shown() const {
    return master_.Manager().Objects(".1.3.6.1.4.1.32473");
  }

  const std::string kCell = CellOid(1, 2, "1") + " = INTEGER: 10";
  const std::string kEvent = CellOid(2, 2, "1") + " = INTEGER: 20";
  const std::string kScalar = ScalarOid(1) + " = INTEGER: 30";
  ConnectionReceiver receiver_;
  MasterAgent master_;
  SubAgent subAgent_;
  NodeRegistry registry_;
};

using RegisterMibs = AfterRestart<TestSubAgent>;
using ReregisterMibs = AfterRestart<ReregisteringSubAgent>;

TEST_F(RegisterMibs, LeavesAllNodesVisibleAfterARestartOfTheMasterAgent) {
  EXPECT_THAT(Shown(), ElementsAre(kCell, kEvent, kScalar));
  RestartMaster();
  EXPECT_THAT(Shown(), ElementsAre(kCell, kEvent, kScalar));
}

TEST_F(ReregisterMibs, HidesIteratorTablesAfterARestartOfTheMasterAgent) {
  EXPECT_THAT(Shown(), ElementsAre(kCell, kEvent, kScalar));
  RestartMaster();
  EXPECT_THAT(Shown(), ElementsAre(kEvent, kScalar));
}

TEST_F(RegisterMibs, ChangesNothingWhileTheSessionIsUp) {
  NetSNMPNode::RegisterMibs();
  EXPECT_THAT(Shown(), ElementsAre(kCell, kEvent, kScalar));
}

TEST_F(RegisterMibs, DoesNotBringBackATableHiddenByReregisterMibs) {
  NetSNMPNode::ReregisterMibs();
  EXPECT_THAT(Shown(), ElementsAre(kEvent, kScalar));
  NetSNMPNode::RegisterMibs();
  EXPECT_THAT(Shown(), ElementsAre(kEvent, kScalar));
}

}  // namespace
