// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/ServedTableTest.h"

namespace {

using testing::ElementsAre;

class ServedTableSet : public ServedTableTest {
 protected:
  void AddSpeed(int unit, int& speed) {
    store_->AddRow(Values(Index(Int(unit)), Index(Unsigned(1)),
                          NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));
  }

  // Goes through the phases of a SET as the agent library does.
  int SetAll(CellRequest& set) {
    for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                           MODE_SET_ACTION, MODE_SET_COMMIT}) {
      Serve(set, mode);
      if (set.Status() != SNMP_ERR_NOERROR) {
        const int status = set.Status();
        Serve(set, MODE_SET_FREE);
        return status;
      }
    }
    return SNMP_ERR_NOERROR;
  }
};

TEST_F(ServedTableSet, WritesTheVariableOfTheApplication) {
  int speed = 10;
  AddSpeed(1, speed);
  CellRequest set(CellOid(3, 1, 1));
  set.SetInteger(20);
  EXPECT_EQ(SetAll(set), SNMP_ERR_NOERROR);
  EXPECT_EQ(speed, 20);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 20"));
}

TEST_F(ServedTableSet, ShowsTheOldValueOfACopiedCell) {
  store_->AddRow(
      Values(Index(Int(1)), Index(Unsigned(1)), Int(10, eNodeAccessReadWrite)));
  CellRequest set(CellOid(3, 1, 1));
  set.SetInteger(20);
  EXPECT_EQ(SetAll(set), SNMP_ERR_NOERROR);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 10"));
}

TEST_F(ServedTableSet, IsRefusedWhereNothingCanBeSet) {
  AddSlot(1, 1);
  const std::pair<Oid, int> cells[] = {
      {CellOid(3, 1, 1), SNMP_ERR_NOTWRITABLE},
      {CellOid(3, 2, 2), SNMP_ERR_NOCREATION},
      {CellOid(4, 1, 1), SNMP_ERR_NOTWRITABLE},
      {CellOid(1, 1, 1), SNMP_ERR_NOTWRITABLE},
      {TestOid({2, 1, 3, 1}), SNMP_ERR_NOCREATION}};
  for (const auto& [oid, status] : cells) {
    CellRequest set(oid);
    set.SetInteger(20);
    EXPECT_EQ(SetAll(set), status) << testing::PrintToString(oid);
  }
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 0"));
}

TEST_F(ServedTableSet, OfARowReplacedOnTheWayWritesNothing) {
  int speed = 10;
  AddSpeed(1, speed);
  CellRequest set(CellOid(3, 1, 1));
  set.SetInteger(20);
  for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2}) {
    Serve(set, mode);
    EXPECT_EQ(set.Status(), SNMP_ERR_NOERROR);
  }
  AddSpeed(1, speed);
  AddSpeed(1, speed);
  Serve(set, MODE_SET_ACTION);
  EXPECT_EQ(set.Status(), SNMP_ERR_NOSUCHNAME);
  Serve(set, MODE_SET_COMMIT);
  EXPECT_EQ(speed, 10);
}

TEST_F(ServedTableSet, OfATableWhoseStoreHasGoneWritesNothing) {
  int speed = 10;
  AddSpeed(1, speed);
  CellRequest set(CellOid(3, 1, 1));
  set.SetInteger(20);
  Serve(set, MODE_SET_RESERVE1);
  delete store_;
  Serve(set, MODE_SET_RESERVE2);
  EXPECT_EQ(set.Status(), SNMP_ERR_NOSUCHNAME);
  Serve(set, MODE_SET_FREE);
  EXPECT_EQ(speed, 10);
}

TEST_F(ServedTableSet, KeepsToTheAccessModeOfTheTable) {
  auto* const readOnly =
      BuildTable(TestOid({3}), "readOnly", eNodeAccessReadOnly);
  auto* const writeOnly =
      BuildTable(TestOid({4}), "writeOnly", eNodeAccessWriteOnly);
  auto* const store = BuildStore("shared", Values(Int(0)), 2, readOnly);
  writeOnly->TableEntryNode(store);
  int speed = 10;
  store->AddRow(
      Values(Index(Int(1)), NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));

  CellRequest set(TestOid({3, 1, 2, 1}));
  set.SetInteger(20);
  set.Serve(readOnly->handlerRegistration_, MODE_SET_RESERVE1);
  EXPECT_EQ(set.Status(), SNMP_ERR_NOTWRITABLE);
  CellRequest get(TestOid({4, 1, 2, 1}));
  get.Serve(writeOnly->handlerRegistration_, MODE_GET);
  EXPECT_EQ(get.Type(), ASN_NULL);

  CellRequest allowedGet(TestOid({3, 1, 2, 1}));
  allowedGet.Serve(readOnly->handlerRegistration_, MODE_GET);
  EXPECT_EQ(allowedGet.Integer(), 10);
  CellRequest allowedSet(TestOid({4, 1, 2, 1}));
  allowedSet.SetInteger(20);
  for (const int mode : {MODE_SET_RESERVE1, MODE_SET_COMMIT}) {
    allowedSet.Serve(writeOnly->handlerRegistration_, mode);
  }
  EXPECT_EQ(speed, 20);
}

}  // namespace
