// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTrapTrigger.h"

#include <type_traits>

#include "TrapTest.h"
#include "support/Layout.h"
#include "support/Request.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFired[] = "Trap = fanAlarm; data node trap fired.";
constexpr char kNotFired[] =
    "Trap = fanAlarm; firing of data node trap failed.";
constexpr char kCalled[] = "Trigger callback called.";

class TrapTrigger : public TrapTest {
 protected:
  // Log lines of fanSpeed, its registration left out.
  std::vector<std::string> LinesAfter(void (*act)(NetSNMPDataNode*),
                                      NetSNMPDataNode* node) {
    log_.Lines();
    act(node);
    return log_.Lines();
  }
};

int calls = 0;
void CountCall(NetSNMPDataNode*) { ++calls; }

void Fire(NetSNMPDataNode* node) { node->DataNodeTrapTrigger(); }
void Notify(NetSNMPDataNode* node) { node->nodeData_->OnSetNodeValue(); }

TEST(ATrapTrigger, KeepsItsCallbackAndTheNameOfItsTrap) {
  const NetSNMPTrapTrigger trigger(CountCall, "fanAlarm");
  EXPECT_EQ(trigger.trapCallback_, CountCall);
  EXPECT_EQ(trigger.trapName_, "fanAlarm");
  const NetSNMPTrapTrigger idle(nullptr, "");
  EXPECT_EQ(idle.trapCallback_, nullptr);
  EXPECT_EQ(idle.trapName_, "");
}

TEST(ATrapTrigger, HasItsFieldsInOrderAndNoVirtualOperationButTheDestructor) {
  struct Alike {
    virtual ~Alike() = default;
    void (*callback)(NetSNMPDataNode*);
    std::string name;
  };
  const NetSNMPTrapTrigger trigger(nullptr, "");
  EXPECT_TRUE(
      LieInOrder({&trigger, &trigger.trapCallback_, &trigger.trapName_}));
  EXPECT_EQ(sizeof(NetSNMPTrapTrigger), sizeof(Alike));
  EXPECT_TRUE(std::has_virtual_destructor<NetSNMPTrapTrigger>::value);
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPTrapTrigger>::value);
}

TEST_F(TrapTrigger, SendsTheTrapTwiceAndLogsOnce) {
  BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  EXPECT_THAT(LinesAfter(Fire, node), ElementsAre(FanSpeedLine(kFired)));
  EXPECT_THAT(sent_.Take(), ElementsAre(FanAlarmWith(7), FanAlarmWith(7)));
}

TEST_F(TrapTrigger, DropsWhatTheTrapHadCollected) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  trap->AddDataObject(node);
  Fire(node);
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapTrigger, LogsThatTheTrapFailedWhenDisconnected) {
  auto* const trap = BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  trap->AddDataObject(node);
  subAgent_.SetConnected(false);
  EXPECT_THAT(LinesAfter(Fire, node), ElementsAre(FanSpeedLine(kNotFired)));
  EXPECT_THAT(sent_.Take(), IsEmpty());
  EXPECT_EQ(trap->DataVariableCount(), 0);
}

TEST_F(TrapTrigger, LogsThatTheTrapFailedWhenItCannotBeBuilt) {
  BuildTrap(LongOid(129), "fanAlarm");
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  EXPECT_THAT(LinesAfter(Fire, node), ElementsAre(FanSpeedLine(kNotFired)));
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapTrigger, DoesNothingWhenItNamesNoTrap) {
  NetSNMPNode::nodeMap_->emplace("hole", nullptr);
  for (const char* name : {"", "unknown", "hole", "fanSpeed"}) {
    auto* const node = BuildFanSpeedWithTrap(name);
    EXPECT_THAT(LinesAfter(Fire, node), IsEmpty()) << name;
  }
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapTrigger, DoesNothingWithoutARegistry) {
  NetSNMPNode::DeleteNodeMap();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  EXPECT_THAT(LinesAfter(Fire, node), IsEmpty());
  EXPECT_THAT(sent_.Take(), IsEmpty());
  delete node;
}

// Answers the calls of TriggerV2Trap() with the results it is given.
class ScriptedTrap : public NetSNMPTrapNode {
 public:
  ScriptedTrap(Oid oid, const std::string& name, std::vector<bool> results)
      : NetSNMPTrapNode(oid.data(), Length(oid), name),
        results_(std::move(results)) {}
  bool TriggerV2Trap(NetSNMPDataNode*) override {
    return results_.at(calls_++);
  }
  std::size_t Calls() const { return calls_; }

 private:
  std::vector<bool> results_;
  std::size_t calls_ = 0;
};

TEST_F(TrapTrigger, ReportsTheOutcomeOfTheSecondTrapOnly) {
  for (const bool second : {true, false}) {
    const auto* const trap = new ScriptedTrap(
        kFanAlarmOid, "fanAlarm", std::vector<bool>{!second, second});
    auto* const node = BuildFanSpeedWithTrap("fanAlarm");
    EXPECT_THAT(LinesAfter(Fire, node),
                ElementsAre(FanSpeedLine(second ? kFired : kNotFired)));
    EXPECT_EQ(trap->Calls(), 2U);
  }
}

TEST_F(TrapTrigger, IsFiredByANotificationWithoutACallback) {
  BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm");
  EXPECT_THAT(LinesAfter(Notify, node), ElementsAre(FanSpeedLine(kFired)));
  EXPECT_THAT(sent_.Take(), ElementsAre(FanAlarmWith(7), FanAlarmWith(7)));
}

TEST_F(TrapTrigger, GivesWayToACallback) {
  BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm", CountCall);
  calls = 0;
  EXPECT_THAT(LinesAfter(Notify, node), ElementsAre(FanSpeedLine(kCalled)));
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapTrigger, GoesBeforeTheCallbackForCellsOfTables) {
  BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm", CountCall);
  node->nodeData_->tableData_ = true;
  calls = 0;
  EXPECT_THAT(LinesAfter(Notify, node), ElementsAre(FanSpeedLine(kFired)));
  EXPECT_EQ(calls, 0);
  node->nodeData_->tableData_ = false;
}

TEST_F(TrapTrigger, IsNotFiredWithNotificationDisabledOrWithoutAnOwner) {
  BuildFanAlarm();
  auto* const node = BuildFanSpeedWithTrap("fanAlarm", CountCall);
  calls = 0;
  node->nodeData_->notifyEnabled_ = false;
  EXPECT_THAT(LinesAfter(Notify, node), IsEmpty());
  node->nodeData_->notifyEnabled_ = true;
  node->nodeData_->ownerNode_ = nullptr;
  EXPECT_THAT(LinesAfter(Notify, node), IsEmpty());
  EXPECT_EQ(calls, 0);
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(TrapTrigger, IsFiredByEverySetWhetherOrNotTheValueChanged) {
  BuildFanAlarm();
  BuildFanSpeedWithTrap("fanAlarm");
  log_.Lines();
  NetSNMPDataNode::SetNodeData("fanSpeed", 9);
  NetSNMPDataNode::SetNodeData("fanSpeed", 9);
  EXPECT_THAT(sent_.Take(), ElementsAre(FanAlarmWith(9), FanAlarmWith(9),
                                        FanAlarmWith(9), FanAlarmWith(9)));
  const std::string set = FanSpeedLine("Node Data = 9; data value set.");
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kFired), set,
                                        FanSpeedLine(kFired), set));
}

TEST_F(TrapTrigger, IsFiredByTheSetOfAManager) {
  BuildFanAlarm();
  BuildFanSpeedWithTrap("fanAlarm");
  Request request(kFanSpeedOid, MODE_SET_COMMIT);
  request.SetInteger(9);
  EXPECT_EQ(request.HandleAs("fanSpeed"), SNMP_ERR_NOERROR);
  EXPECT_THAT(sent_.Take(), ElementsAre(FanAlarmWith(9), FanAlarmWith(9)));
}

}  // namespace
