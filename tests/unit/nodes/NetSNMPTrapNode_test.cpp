// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTrapNode.h"

#include <memory>
#include <type_traits>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "TrapTest.h"
#include "support/Layout.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrapNode : public TrapTest {
 protected:
  NetSNMPDataNode* BuildOther() {
    return Build(kOtherOid, "other",
                 NetSNMPIntNodeData(&other_, eNodeAccessReadOnly));
  }

  int other_ = 8;
};

TEST_F(TrapNode, BeginsWithItsOwnOidAsSnmpTrapOid) {
  const auto* const trap = BuildFanAlarm();
  EXPECT_THAT(VariablesOf(trap->trapVarList_),
              ElementsAre(TrapOidVariable(kFanAlarmOid)));
  EXPECT_THAT(trap->dataObjects_, IsEmpty());
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapNode, NeedsNoRegistration) {
  auto* const trap = BuildFanAlarm();
  EXPECT_TRUE(trap->RegisterNode());
  EXPECT_FALSE(trap->registered_);
  trap->UnregisterNode();
  EXPECT_TRUE(trap->RegisterNode());
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanAlarmOid), nullptr);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(TrapNode, IsNotRegisteredOutsideTheRegistry) {
  NetSNMPNode::DeleteNodeMap();
  const std::unique_ptr<NetSNMPTrapNode> trap(BuildFanAlarm());
  EXPECT_FALSE(trap->RegisterNode());
}

TEST_F(TrapNode, CollectsWhateverItIsGivenInOrder) {
  auto* const trap = BuildFanAlarm();
  auto* const first = BuildFanSpeed();
  auto* const second = BuildOther();
  for (auto* const node : {second, first, first, second}) {
    EXPECT_TRUE(trap->AddDataObject(node));
  }
  EXPECT_TRUE(trap->AddDataObject(nullptr));
  EXPECT_THAT(trap->dataObjects_,
              ElementsAre(second, first, first, second, nullptr));
  EXPECT_EQ(trap->DataVariableCount(), 5);
}

TEST_F(TrapNode, SendsWhatItCollectedAfterItsOid) {
  auto* const trap = BuildFanAlarm();
  trap->AddDataObject(BuildOther());
  trap->AddDataObject(BuildFanSpeed());
  EXPECT_TRUE(trap->TriggerV2Trap());
  EXPECT_THAT(sent_.Take(),
              ElementsAre(TrapVariables{TrapOidVariable(kFanAlarmOid),
                                        IntegerVariable(kOtherOid, 8),
                                        IntegerVariable(kFanSpeedOid, 7)}));
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapNode, SendsNothingWhenItCollectedNothing) {
  auto* const trap = BuildFanAlarm();
  EXPECT_FALSE(trap->TriggerV2Trap());
  EXPECT_THAT(sent_.Take(), IsEmpty());
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapNode, SendsOneScalarAndDropsWhatItCollected) {
  auto* const trap = BuildFanAlarm();
  trap->AddDataObject(BuildOther());
  EXPECT_TRUE(trap->TriggerV2Trap(BuildFanSpeed()));
  EXPECT_THAT(sent_.Take(), ElementsAre(FanAlarmWith(7)));
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapNode, CarriesTheValueOfAnyType) {
  unsigned int limit = 4000000000U;
  std::string label = "left";
  char text[] = "right";
  bool enabled = false;
  unsigned char serial[] = {0, 0xFF};
  NetSNMPDataNode* const nodes[] = {
      Build(TestOid({2, 0}), "limit",
            NetSNMPUnsignedIntNodeData(&limit, eNodeAccessReadOnly)),
      Build(TestOid({3, 0}), "label",
            NetSNMPStringNodeData(&label, eNodeAccessReadOnly)),
      Build(TestOid({4, 0}), "text",
            NetSNMPCharNodeData(text, eNodeAccessReadOnly)),
      Build(TestOid({5, 0}), "enabled",
            NetSNMPBoolNodeData(&enabled, eNodeAccessReadOnly)),
      Build(TestOid({6, 0}), "serial",
            NetSNMPByteNodeData(serial, sizeof serial, eNodeAccessReadOnly))};
  auto* const trap = BuildFanAlarm();
  for (auto* const node : nodes) trap->AddDataObject(node);
  EXPECT_TRUE(trap->TriggerV2Trap());
  EXPECT_THAT(sent_.Take(),
              ElementsAre(TrapVariables{
                  TrapOidVariable(kFanAlarmOid),
                  IntegerVariable(TestOid({2, 0}), 4000000000L, ASN_UNSIGNED),
                  TextVariable(TestOid({3, 0}), "left"),
                  TextVariable(TestOid({4, 0}), "right"),
                  IntegerVariable(TestOid({5, 0}), 2),
                  TextVariable(TestOid({6, 0}), std::string("\0\xFF", 2))}));
}

TEST_F(TrapNode, DropsWhatItCollectedWhenTheSubagentIsDisconnected) {
  auto* const trap = BuildFanAlarm();
  trap->AddDataObject(BuildFanSpeed());
  trap->AddDataObject(BuildOther());
  subAgent_.SetConnected(false);
  EXPECT_FALSE(trap->TriggerV2Trap());
  EXPECT_EQ(trap->DataVariableCount(), 0);
  subAgent_.SetConnected(true);
  EXPECT_FALSE(trap->TriggerV2Trap());
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, SendsNothingWithoutAConnectedSubagent) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeed();
  ISNMPSubAgent* destroyed = nullptr;
  {
    FakeSubAgent brief(true);
    destroyed = &brief;
  }
  FakeSubAgent disconnected(false);
  for (ISNMPSubAgent* const subAgent :
       {static_cast<ISNMPSubAgent*>(nullptr), destroyed,
        static_cast<ISNMPSubAgent*>(&disconnected)}) {
    NetSNMPNode::snmpSubAgent_ = subAgent;
    trap->AddDataObject(node);
    EXPECT_FALSE(trap->TriggerV2Trap(node));
    EXPECT_EQ(trap->DataVariableCount(), 0);
    trap->AddDataObject(node);
    EXPECT_FALSE(trap->TriggerV2Trap());
    EXPECT_EQ(trap->DataVariableCount(), 0);
  }
  NetSNMPNode::snmpSubAgent_ = &subAgent_;
  EXPECT_THAT(sent_.Take(), IsEmpty());
  EXPECT_THAT(VariablesOf(trap->trapVarList_),
              ElementsAre(TrapOidVariable(kFanAlarmOid)));
}

TEST_F(TrapNode, KeepsItsVariablesUntilTheNextBuildAndNoLonger) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeed();
  for (speed_ = 1; speed_ < 4; ++speed_) {
    EXPECT_TRUE(trap->TriggerV2Trap(node));
    EXPECT_EQ(VariablesOf(trap->trapVarList_), FanAlarmWith(speed_));
  }
  EXPECT_THAT(sent_.Take(),
              ElementsAre(FanAlarmWith(1), FanAlarmWith(2), FanAlarmWith(3)));
  subAgent_.SetConnected(false);
  EXPECT_FALSE(trap->TriggerV2Trap());
  EXPECT_FALSE(trap->TriggerV2Trap(node));
  EXPECT_EQ(VariablesOf(trap->trapVarList_), FanAlarmWith(3));
  subAgent_.SetConnected(true);
  EXPECT_FALSE(trap->TriggerV2Trap());
  EXPECT_THAT(VariablesOf(trap->trapVarList_),
              ElementsAre(TrapOidVariable(kFanAlarmOid)));
}

TEST_F(TrapNode, SendsNothingAfterAFailureMidway) {
  auto* const trap = BuildFanAlarm();
  auto* const withoutValue = BuildOther();
  delete withoutValue->nodeData_;
  withoutValue->nodeData_ = nullptr;
  auto* const node = BuildFanSpeed();
  for (auto* const bad :
       {withoutValue, static_cast<NetSNMPDataNode*>(nullptr)}) {
    for (auto* const each : {node, bad, node}) trap->AddDataObject(each);
    EXPECT_FALSE(trap->TriggerV2Trap());
    EXPECT_EQ(trap->DataVariableCount(), 0);
    EXPECT_EQ(VariablesOf(trap->trapVarList_), FanAlarmWith(7));
  }
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, AppendsAScalarToItsVariables) {
  auto* const trap = BuildFanAlarm();
  EXPECT_TRUE(trap->AddDataObjectToTrap(BuildFanSpeed()));
  EXPECT_TRUE(trap->AddDataObjectToTrap(BuildOther()));
  EXPECT_THAT(VariablesOf(trap->trapVarList_),
              ElementsAre(TrapOidVariable(kFanAlarmOid),
                          IntegerVariable(kFanSpeedOid, 7),
                          IntegerVariable(kOtherOid, 8)));
  EXPECT_EQ(trap->DataVariableCount(), 0);
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, AppendsNoScalarThatIsNullOrHasNoValue) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeed();
  delete node->nodeData_;
  node->nodeData_ = nullptr;
  EXPECT_FALSE(trap->AddDataObjectToTrap(nullptr));
  EXPECT_FALSE(trap->AddDataObjectToTrap(node));
  EXPECT_FALSE(trap->TriggerV2Trap(nullptr));
  EXPECT_FALSE(trap->TriggerV2Trap(node));
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, IsNeverSentWithAnOidBeyond128SubIdentifiers) {
  auto* const node = BuildFanSpeed();
  for (const unsigned int length : {129U, 256U, 257U}) {
    auto* const trap = BuildTrap(LongOid(length), "fanAlarm");
    EXPECT_FALSE(trap->AddDataObjectToTrap(node));
    EXPECT_FALSE(trap->TriggerV2Trap(node));
    trap->AddDataObject(node);
    EXPECT_FALSE(trap->TriggerV2Trap());
    EXPECT_EQ(trap->DataVariableCount(), 0);
  }
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, IsSentWithAnOidOf128SubIdentifiers) {
  auto* const trap = BuildTrap(LongOid(128), "fanAlarm");
  EXPECT_TRUE(trap->TriggerV2Trap(BuildFanSpeed()));
  EXPECT_THAT(sent_.Take(),
              ElementsAre(TrapVariables{TrapOidVariable(LongOid(128)),
                                        IntegerVariable(kFanSpeedOid, 7)}));
}

TEST_F(TrapNode, CarriesNoScalarWithAnOidBeyond128SubIdentifiers) {
  auto* const trap = BuildFanAlarm();
  auto* const node = Build(LongOid(129), "long",
                           NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_FALSE(trap->TriggerV2Trap(node));
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapNode, LeavesWhatItCollectedAloneWhenItIsDestroyed) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeed();
  trap->TriggerV2Trap(node);
  trap->AddDataObject(node);
  delete trap;
  EXPECT_EQ(NetSNMPNode::nodeMap_->count("fanAlarm"), 0U);
  EXPECT_EQ(node->NodeName(), "fanSpeed");
}

TEST_F(TrapNode, IsANodeAloneWithItsFieldsInTheirFixedOrder) {
  const auto* const trap = BuildFanAlarm();
  EXPECT_FALSE((std::is_base_of<NetSNMPTrapTrigger, NetSNMPTrapNode>::value));
  EXPECT_TRUE(LieInOrder({static_cast<const NetSNMPNode*>(trap), &trap->mapped_,
                          &trap->dataObjects_, &trap->trapVarList_}));
}

TEST_F(TrapNode, HasItsVirtualOperationsInTheirFixedSlots) {
  using Trap = NetSNMPTrapNode;
  EXPECT_EQ(VirtualSlot(&Trap::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&Trap::AddDataObject), 9);
  EXPECT_EQ(VirtualSlot(static_cast<bool (Trap::*)()>(&Trap::TriggerV2Trap)),
            10);
  EXPECT_EQ(VirtualSlot(static_cast<bool (Trap::*)(NetSNMPDataNode*)>(
                &Trap::TriggerV2Trap)),
            11);
  EXPECT_EQ(VirtualSlot(&Trap::AddDataObjectToTrap), -1);
  EXPECT_EQ(VirtualSlot(&Trap::DataVariableCount), -1);
}

}  // namespace
