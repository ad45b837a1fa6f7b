// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <ostream>

#include "CellTest.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTrapNode.h"
#include "support/SentTraps.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CellSet : public CellTest {
 protected:
  void BuildAlarm() {
    Oid oid = kAlarmOid;
    new NetSNMPTrapNode(oid.data(), Length(oid), "portAlarm");
  }

  // What the alarm carries.
  TrapVariables AlarmWith(const TrapVariable& cell) const {
    return {TrapOidVariable(kAlarmOid), cell};
  }

  long StoredSpeed() const {
    return *static_cast<int*>(PortRow()->at(2)->NodeDataValue());
  }

  const Oid kAlarmOid = TestOid({0, 1});
  const Oid kSpeedOid = CellOid(3, 1, 2);
  SentTraps sent_;
};

TEST_F(CellSet, LeavesTheStoredRowAsItIs) {
  SpeedSet set(PortRow(), 20);
  EXPECT_EQ(set.Commit(), SNMP_ERR_NOERROR);
  EXPECT_EQ(set.Status(), SNMP_ERR_NOERROR);
  EXPECT_EQ(StoredSpeed(), 10);
  EXPECT_THAT(log_.Lines(),
              ElementsAre("SNMP: Node = port.1.2; Node Data = 20; data value "
                          "set."));
}

TEST_F(CellSet, WritesTheVariableOfTheApplicationInTheCommitPhase) {
  int speed = 10;
  store_->AddRow(Values(Index(Int(1)), Index(Unsigned(2)),
                        NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));
  SpeedSet set(PortRow(), 20);
  for (const int mode :
       {MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION}) {
    EXPECT_EQ(set.HandleAs("portTable", mode), SNMP_ERR_NOERROR);
    EXPECT_EQ(speed, 10) << "mode " << mode;
  }
  EXPECT_EQ(set.HandleAs("portTable", MODE_SET_COMMIT), SNMP_ERR_NOERROR);
  EXPECT_EQ(speed, 20);
  EXPECT_EQ(StoredSpeed(), 20);
}

TEST_F(CellSet, IsAnsweredWithBadValueWhenItIsFreedOrUndone) {
  for (const int mode : {MODE_SET_FREE, MODE_SET_UNDO}) {
    SpeedSet set(PortRow(), 20);
    set.HandleAs("portTable", MODE_SET_RESERVE1);
    EXPECT_EQ(set.HandleAs("portTable", mode), SNMP_ERR_BADVALUE);
    EXPECT_EQ(set.Status(), SNMP_ERR_BADVALUE);
  }
}

TEST_F(CellSet, IsRefusedInBothReservePhases) {
  for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2}) {
    CellRequest label(CellOid(4, 1, 2));
    label.Choose(PortRow(), 4);
    label.SetInteger(20);
    EXPECT_EQ(label.HandleAs("portTable", mode), SNMP_ERR_NOTWRITABLE);
    EXPECT_EQ(label.Status(), SNMP_ERR_NOTWRITABLE);

    CellRequest withoutValue(kSpeedOid);
    withoutValue.Choose(PortRow(), 3);
    EXPECT_EQ(withoutValue.HandleAs("portTable", mode), SNMP_ERR_BADVALUE);
    EXPECT_EQ(withoutValue.Status(), SNMP_ERR_BADVALUE);
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

// The node that fires the trap has its own copy of the cell, made before.
TEST_F(CellSet, FiresTheTrapWithTheOldValueOfACopiedCell) {
  BuildAlarm();
  SpeedSet set(PortRow(), 20);
  EXPECT_EQ(set.Commit(), SNMP_ERR_NOERROR);
  const TrapVariables alarm = AlarmWith(IntegerVariable(kSpeedOid, 10));
  EXPECT_THAT(sent_.Take(), ElementsAre(alarm, alarm));
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre(
          "SNMP: Node = port.1.2; Trap = portAlarm; data node trap fired.",
          "SNMP: Node = port.1.2; Node Data = 20; data value set."));
}

TEST_F(CellSet, FiresTheTrapWithTheNewValueOfTheApplicationsVariable) {
  BuildAlarm();
  int speed = 10;
  store_->AddRow(Values(Index(Int(1)), Index(Unsigned(2)),
                        NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));
  SpeedSet set(PortRow(), 20);
  EXPECT_EQ(set.Commit(), SNMP_ERR_NOERROR);
  const TrapVariables alarm = AlarmWith(IntegerVariable(kSpeedOid, 20));
  EXPECT_THAT(sent_.Take(), ElementsAre(alarm, alarm));
}

TEST_F(CellSet, FiresNoTrapForTextCopiedByTheCell) {
  BuildAlarm();
  store_->AddRow(Values(Index(Int(1)), Index(Unsigned(2)),
                        Text("old", eNodeAccessReadWrite)));
  SpeedSet set(PortRow(), 20);
  EXPECT_EQ(set.Commit(), SNMP_ERR_NOERROR);
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

TEST_F(CellSet, FiresNoTrapBeforeTheCommitPhase) {
  BuildAlarm();
  SpeedSet set(PortRow(), 20);
  for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION,
                         MODE_SET_FREE, MODE_SET_UNDO}) {
    set.HandleAs("portTable", mode);
  }
  EXPECT_THAT(sent_.Take(), IsEmpty());
}

// What an application may do to the row between two phases of a SET.
struct Change {
  const char* name;
  void (*make)(NetSNMPTableEntryNode& store, const Values& row);
};

std::ostream& operator<<(std::ostream& stream, const Change& change) {
  return stream << change.name;
}

class RowChange : public CellSet, public testing::WithParamInterface<Change> {};

TEST_P(RowChange, BetweenThePhasesLeavesTheNewRowUntouched) {
  BuildAlarm();
  for (const int change :
       {MODE_SET_RESERVE2, MODE_SET_ACTION, MODE_SET_COMMIT}) {
    int speed = 10;
    const Values row(Index(Int(1)), Index(Unsigned(2)),
                     NetSNMPIntNodeData(&speed, eNodeAccessReadWrite));
    store_->AddRow(row);
    SpeedSet set(PortRow(), 20);
    ASSERT_EQ(set.HandleAs("portTable", MODE_SET_RESERVE1), SNMP_ERR_NOERROR);
    for (const int mode :
         {MODE_SET_RESERVE2, MODE_SET_ACTION, MODE_SET_COMMIT}) {
      if (mode == change) GetParam().make(*store_, row);
      EXPECT_EQ(set.HandleAs("portTable", mode), SNMP_ERR_NOERROR);
    }
    EXPECT_EQ(set.Status(), SNMP_ERR_NOSUCHNAME);
    EXPECT_EQ(speed, 10);
    EXPECT_THAT(sent_.Take(), IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(
    Is, RowChange,
    testing::Values(
        Change{"Removal", [](NetSNMPTableEntryNode& store,
                             const Values&) { store.RemoveRow("port.1.2"); }},
        Change{"Replacement", [](NetSNMPTableEntryNode& store,
                                 const Values& row) { store.AddRow(row); }},
        // A row may get the address of one that was there before.
        Change{"TwofoldReplacement",
               [](NetSNMPTableEntryNode& store, const Values& row) {
                 store.AddRow(row);
                 store.AddRow(row);
               }},
        Change{"RemovalAndReturn",
               [](NetSNMPTableEntryNode& store, const Values& row) {
                 store.RemoveRow("port.1.2");
                 store.AddRow(row);
               }},
        Change{"AnotherRowInstead",
               [](NetSNMPTableEntryNode& store, const Values&) {
                 store.RemoveRow("port.1.2");
                 store.AddRow(Values(Index(Int(7)), Index(Unsigned(7)),
                                     Int(70, eNodeAccessReadWrite)));
               }}),
    testing::PrintToStringParamName());

TEST_F(CellSet, OfSeveralCellsGoesOnWithTheRowsThatStay) {
  int speed = 10;
  store_->AddRow(Values(Index(Int(1)), Index(Unsigned(3)),
                        NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));
  SpeedSet removed(PortRow(), 20);
  CellRequest stays(CellOid(3, 1, 3));
  stays.Choose(store_->GetRow("port.1.3"), 3);
  stays.SetInteger(30);
  removed.Append(stays);
  removed.HandleAs("portTable", MODE_SET_RESERVE1);
  store_->RemoveRow("port.1.2");
  EXPECT_EQ(removed.HandleAs("portTable", MODE_SET_COMMIT), SNMP_ERR_NOERROR);
  EXPECT_EQ(removed.Status(), SNMP_ERR_NOSUCHNAME);
  EXPECT_EQ(stays.Status(), SNMP_ERR_NOERROR);
  EXPECT_EQ(speed, 30);
}

}  // namespace
