// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataNode.h"

#include <memory>
#include <type_traits>
#include <typeinfo>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTrapNode.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "support/DataNodeTest.h"
#include "support/Layout.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DataNode : public DataNodeTest {};
class ValueByName : public DataNodeTest {};

class UncloneableValue : public NetSNMPIntNodeData {
 public:
  using NetSNMPIntNodeData::NetSNMPIntNodeData;
  NetSNMPNodeData* Clone() const override { return nullptr; }
};

// Logs on its owner's log when it is destroyed.
class MortalValue : public NetSNMPIntNodeData {
 public:
  using NetSNMPIntNodeData::NetSNMPIntNodeData;
  ~MortalValue() override {
    if (ownerNode_ != nullptr) ownerNode_->NodeLogMessage("Value destroyed.");
  }
  NetSNMPNodeData* Clone() const override { return new MortalValue(*this); }
};

NetSNMPDataNode* notified = nullptr;
void NoteNotification(NetSNMPDataNode* node) { notified = node; }

TEST_F(DataNode, KeepsACloneOfTheValueAndBecomesItsOwner) {
  const NetSNMPIntNodeData given(&speed_, eNodeAccessReadWrite);
  const auto* const node = Build(kFanSpeedOid, "fanSpeed", given);
  ASSERT_NE(node->nodeData_, nullptr);
  EXPECT_NE(node->nodeData_, &given);
  EXPECT_EQ(typeid(*node->nodeData_), typeid(NetSNMPIntNodeData));
  EXPECT_EQ(node->nodeData_->externalData_, &speed_);
  EXPECT_EQ(node->nodeData_->ownerNode_, node);
  EXPECT_EQ(given.ownerNode_, nullptr);
}

TEST_F(DataNode, KeepsItsCallbackAndTheNameOfItsTrap) {
  const auto* const node =
      Build(kFanSpeedOid, "fanSpeed",
            NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly), NoteNotification,
            "fanAlarm");
  EXPECT_EQ(node->trapCallback_, NoteNotification);
  EXPECT_EQ(node->trapName_, "fanAlarm");
}

TEST_F(DataNode, HasNoValueAndNoRegistrationWhenTheCloneIsNull) {
  auto* const node = Build(kFanSpeedOid, "fanSpeed",
                           UncloneableValue(&speed_, eNodeAccessReadWrite));
  EXPECT_EQ(node->nodeData_, nullptr);
  EXPECT_FALSE(node->RegisterNode());
  EXPECT_EQ(node->handlerRegistration_, nullptr);
  EXPECT_TRUE(node->mapped_);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNode, HasAnUntypedValueOverTheStorageItIsGiven) {
  const eNodeDataType types[] = {eNodeDataVoid, eNodeDataInt, eNodeDataString,
                                 static_cast<eNodeDataType>(42)};
  for (const eNodeDataType type : types) {
    Oid oid = kFanSpeedOid;
    auto* const node = new NetSNMPDataNode(oid.data(), Length(oid), "fanSpeed",
                                           type, eNodeAccessReadWrite, &speed_,
                                           NoteNotification, "fanAlarm");
    const NetSNMPNodeData& value = *node->nodeData_;
    EXPECT_EQ(typeid(value), typeid(NetSNMPNodeData));
    EXPECT_EQ(value.dataType_, type);
    EXPECT_EQ(value.accessMode_, eNodeAccessReadWrite);
    EXPECT_EQ(value.externalData_, &speed_);
    EXPECT_EQ(value.localData_, nullptr);
    EXPECT_EQ(value.columnNumber_, 0U);
    EXPECT_EQ(value.ownerNode_, node);
    EXPECT_FALSE(value.tableData_);
    EXPECT_FALSE(value.isIndex_);
    EXPECT_TRUE(value.notifyEnabled_);
    EXPECT_EQ(node->trapCallback_, NoteNotification);
    EXPECT_EQ(node->trapName_, "fanAlarm");
    EXPECT_TRUE(node->registered_);
    delete node;
  }
  EXPECT_EQ(speed_, 7);
}

TEST_F(DataNode, UnregistersBeforeItDeletesItsValueAndLeavesTheRegistry) {
  auto* const node = Build(kFanSpeedOid, "fanSpeed",
                           MortalValue(&speed_, eNodeAccessReadOnly));
  log_.Lines();
  delete node;
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre(
          FanSpeedLine("Net-SNMP data node unregistration was successful."),
          FanSpeedLine("Value destroyed.")));
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
}

TEST_F(DataNode, IsDestroyedSilentlyWhenItWasNeverRegistered) {
  subAgent_.SetConnected(false);
  delete BuildFanSpeed();
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNode, TakesThePlaceOfARegisteredNamesake) {
  BuildFanSpeed();
  const auto* const newer = Build(
      kOtherOid, "fanSpeed", NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOtherOid), newer->handlerRegistration_);
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre(
          FanSpeedLine("Net-SNMP data node registration was successful."),
          FanSpeedLine("Net-SNMP data node unregistration was successful."),
          FanSpeedLine("Net-SNMP data node registration was successful.")));
}

TEST_F(ValueByName, IsThatOfTheScalarOfThatName) {
  const auto* const node = BuildFanSpeed();
  EXPECT_EQ(NetSNMPDataNode::GetNodeData("fanSpeed"), node->nodeData_);
}

TEST_F(ValueByName, IsNullWhenThereIsNoSuchScalar) {
  Oid oid = kOtherOid;
  new NetSNMPTrapNode(oid.data(), Length(oid), "fanAlarm");
  NetSNMPNode::nodeMap_->emplace("hole", nullptr);
  Build(kFanSpeedOid, "empty", UncloneableValue(&speed_, eNodeAccessReadWrite));
  for (const char* name : {"unknown", "fanAlarm", "hole", "empty", ""}) {
    EXPECT_EQ(NetSNMPDataNode::GetNodeData(name), nullptr) << name;
  }
}

TEST_F(ValueByName, IsNullWithoutARegistry) {
  BuildFanSpeed();
  NetSNMPNode::DeleteNodeMap();
  EXPECT_EQ(NetSNMPDataNode::GetNodeData("fanSpeed"), nullptr);
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("fanSpeed", 9), 9);
  EXPECT_EQ(speed_, 7);
}

TEST_F(ValueByName, IsSetByTheOverloadOfItsType) {
  unsigned int limit = 1;
  bool enabled = false;
  std::string label = "left";
  BuildFanSpeed();
  Build(TestOid({2, 0}), "limit",
        NetSNMPUnsignedIntNodeData(&limit, eNodeAccessReadOnly));
  Build(TestOid({3, 0}), "enabled",
        NetSNMPBoolNodeData(&enabled, eNodeAccessReadOnly));
  Build(TestOid({4, 0}), "label",
        NetSNMPStringNodeData(&label, eNodeAccessReadOnly));

  EXPECT_EQ(NetSNMPDataNode::SetNodeData("fanSpeed", -9), -9);
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("limit", 4000000000U), 4000000000U);
  EXPECT_TRUE(NetSNMPDataNode::SetNodeData("enabled", true));
  const std::string right = "right";
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("label", right), right);

  EXPECT_EQ(speed_, -9);
  EXPECT_EQ(limit, 4000000000U);
  EXPECT_TRUE(enabled);
  EXPECT_EQ(label, "right");
}

TEST_F(ValueByName, StaysWhenAnotherTypeIsSetAndTheArgumentIsReturned) {
  BuildFanSpeed();
  log_.Lines();
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("fanSpeed", 9U), 9U);
  EXPECT_TRUE(NetSNMPDataNode::SetNodeData("fanSpeed", true));
  const std::string nine = "9";
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("fanSpeed", nine), nine);
  EXPECT_EQ(speed_, 7);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ValueByName, ReturnsTheArgumentWhenThereIsNoSuchScalar) {
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("unknown", 7), 7);
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("unknown", 7U), 7U);
  EXPECT_TRUE(NetSNMPDataNode::SetNodeData("unknown", true));
  EXPECT_FALSE(NetSNMPDataNode::SetNodeData("unknown", false));
  const std::string text = "text";
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("unknown", text), text);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ValueByName, NotifiesItsNodeWhenItIsSet) {
  const auto* const node = BuildFanSpeed(NoteNotification);
  log_.Lines();
  notified = nullptr;
  NetSNMPDataNode::SetNodeData("fanSpeed", 7);
  EXPECT_EQ(notified, node);
  EXPECT_THAT(log_.Lines(),
              ElementsAre(FanSpeedLine("Trigger callback called."),
                          FanSpeedLine("Node Data = 7; data value set.")));
}

TEST_F(ValueByName, MayBeSetThoughTheCallbackDeletesItsNode) {
  BuildFanSpeed([](NetSNMPDataNode* node) { delete node; });
  EXPECT_EQ(NetSNMPDataNode::SetNodeData("fanSpeed", 9), 9);
  EXPECT_EQ(speed_, 9);
  EXPECT_EQ(NetSNMPDataNode::GetNodeData("fanSpeed"), nullptr);
}

TEST_F(DataNode, HasItsBasesAndFieldsInTheirFixedOrder) {
  const auto* const node = BuildFanSpeed();
  EXPECT_TRUE(LieInOrder({static_cast<const NetSNMPNode*>(node), &node->mapped_,
                          static_cast<const NetSNMPTrapTrigger*>(node),
                          &node->trapName_, &node->nodeData_,
                          &node->handlerRegistration_}));
  EXPECT_EQ(static_cast<const void*>(static_cast<const NetSNMPNode*>(node)),
            node);
}

TEST_F(DataNode, HasNoVirtualOperationsBeyondThoseOfANode) {
  EXPECT_EQ(VirtualSlot(&NetSNMPDataNode::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&NetSNMPDataNode::UnregisterNode), 4);
  EXPECT_EQ(VirtualSlot(&NetSNMPDataNode::DataNodeTrapTrigger), -1);
}

TEST_F(DataNode, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPDataNode>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPDataNode>::value);
}

}  // namespace
