// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTrapNode.h"
#include "TrapTest.h"
#include "support/DataNodeTest.h"
#include "support/LockWitness.h"

namespace {

// A node built under the name of an older one, which it destroys, from what
// belongs to that one.
class ARebuiltNode : public TrapTest {};

TEST_F(ARebuiltNode, MayTakeTheValueOfTheOlderOne) {
  speed_ = 1200;
  BuildFanSpeed();
  auto* const rebuilt = Build(kFanSpeedOid, "fanSpeed",
                              *NetSNMPDataNode::GetNodeData("fanSpeed"));
  EXPECT_EQ(rebuilt->nodeData_->NodeDataToString(), "1200");
}

// Another thread may be about to delete what the copy is made of.
TEST_F(ARebuiltNode, TakesTheLockBeforeItCopiesAValue) {
  bool held = true;
  Build(kFanSpeedOid, "fanSpeed", LockWitness(held));
  EXPECT_TRUE(held);
}

TEST_F(ARebuiltNode, MayTakeTheOidOfTheOlderOne) {
  auto* const older = BuildFanSpeed();
  auto* const rebuilt = new NetSNMPDataNode(
      older->NodeOID(), older->NodeOIDLen(), "fanSpeed",
      NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly), nullptr, "");
  EXPECT_EQ(Oid(rebuilt->NodeOID(), rebuilt->NodeOID() + rebuilt->NodeOIDLen()),
            kFanSpeedOid);
}

TEST_F(ARebuiltNode, MayTakeTheTrapNameOfTheOlderOne) {
  const std::string name = "a trap name that is too long for a short string";
  auto* const older = BuildFanSpeedWithTrap(name);
  auto* const rebuilt = Build(kFanSpeedOid, "fanSpeed",
                              NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly),
                              nullptr, older->trapName_);
  EXPECT_EQ(rebuilt->trapName_, name);
}

TEST_F(ARebuiltNode, MayTakeTheOidOfAnOlderTrap) {
  auto* const older = BuildFanAlarm();
  const Oid oid(older->NodeOID(), older->NodeOID() + older->NodeOIDLen());
  const NetSNMPTrapNode* const rebuilt =
      new NetSNMPTrapNode(older->NodeOID(), older->NodeOIDLen(), "fanAlarm");
  EXPECT_EQ(Oid(rebuilt->NodeOID(), rebuilt->NodeOID() + rebuilt->NodeOIDLen()),
            oid);
}

}  // namespace
