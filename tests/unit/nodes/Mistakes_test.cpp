// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Usual mistakes with scalars that nothing tells: what they do instead.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "support/DataNodeTest.h"

using testing::IsEmpty;

namespace {

class AScalarsMistake : public DataNodeTest {};

TEST_F(AScalarsMistake, IsATextLiteralWhichIsSetAsABool) {
  std::string label = "left";
  bool enabled = false;
  Build(TestOid({2, 0}), "label",
        NetSNMPStringNodeData(&label, eNodeAccessReadOnly));
  Build(TestOid({3, 0}), "enabled",
        NetSNMPBoolNodeData(&enabled, eNodeAccessReadOnly));
  NetSNMPDataNode::SetNodeData("label", "right");
  EXPECT_EQ(label, "left");
  NetSNMPDataNode::SetNodeData("enabled", "false");
  EXPECT_TRUE(enabled);
  NetSNMPDataNode::SetNodeData("label", std::string("right"));
  EXPECT_EQ(label, "right");
}

TEST_F(AScalarsMistake, IsALengthThatIsTooShortAndRegistersAnotherOid) {
  Oid oid = kFanSpeedOid;
  auto* const node = new NetSNMPDataNode(
      oid.data(), Length(oid) - 1, "fanSpeed",
      NetSNMPIntNodeData(&speed_, eNodeAccessReadWrite), nullptr, "");
  EXPECT_TRUE(node->RegisterNode());
  Oid shorter = kFanSpeedOid;
  shorter.pop_back();
  Build(shorter, "other", NetSNMPIntNodeData(&speed_, eNodeAccessReadWrite));
  EXPECT_FALSE(NetSNMPNode::nodeMap_->at("other")->RegisterNode());
  Build(kFanSpeedOid, "right",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_TRUE(NetSNMPNode::nodeMap_->at("right")->RegisterNode());
}

}  // namespace
