// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "LostMaster.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::TableOid;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A table with one row that loses its master agent.
class ATableWithoutMaster : public LostMaster {
 protected:
  ATableWithoutMaster() {
    session_.Connect();
    AddRow(1);
    EXPECT_THAT(Shown(), ElementsAre(RowOne()));
  }

  void AddRow(int number) {
    const NetSNMPAgentGuard guard;
    EXPECT_TRUE(store_->AddRow(Values(Index(Int(number)), Int(10 * number))));
  }

  static std::string RowOne() { return CellOid(1, 2, "1") + " = INTEGER: 10"; }

  std::vector<std::string> Shown() const {
    return session_.Manager().Objects(TableOid(1));
  }

  NetSNMPTableNode* table_ = AddTable(1, "fanTable");
  NetSNMPTableEntryNode* store_ = AddStore(1, "fans", 1, 2, table_);
};

TEST_F(ATableWithoutMaster, IsServedAgainWithWhatHasChangedMeanwhile) {
  LoseMaster();
  AddRow(2);
  store_->RemoveRow("fans.1");
  RegainMaster();
  EXPECT_THAT(Shown(), ElementsAre(CellOid(1, 2, "2") + " = INTEGER: 20"));
}

TEST_F(ATableWithoutMaster, IsGoneIfItIsDeleted) {
  LoseMaster();
  delete table_;
  RegainMaster();
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 2, "1")).out,
              HasSubstr("No Such Object"));
  AddTable(1, "fanTable")->TableEntryNode(store_);
  EXPECT_THAT(Shown(), ElementsAre(RowOne()));
}

TEST_F(ATableWithoutMaster, IsGoneIfItIsUnregisteredAndDeleted) {
  LoseMaster();
  table_->UnregisterNode();
  delete table_;
  RegainMaster();
  EXPECT_THAT(Shown(), IsEmpty());
  AddTable(1, "fanTable")->TableEntryNode(store_);
  EXPECT_THAT(Shown(), ElementsAre(RowOne()));
}

// The agent library keeps the registration that could not be withdrawn.
TEST_F(ATableWithoutMaster, IsServedAgainThoughItWasUnregistered) {
  LoseMaster();
  table_->UnregisterNode();
  RegainMaster();
  EXPECT_TRUE(table_->registered_);
  EXPECT_THAT(Shown(), ElementsAre(RowOne()));
  table_->UnregisterNode();
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(ATableWithoutMaster, IsGoneIfItIsDeletedAfterAllThat) {
  for (const bool down : {false, true}) {
    LoseMaster();
    table_->UnregisterNode();
    RegainMaster();
    if (down) LoseMaster();
    delete table_;
    if (down) RegainMaster();
    EXPECT_THAT(Shown(), IsEmpty());
    table_ = AddTable(1, "fanTable");
    table_->TableEntryNode(store_);
    EXPECT_THAT(Shown(), ElementsAre(RowOne()));
  }
}

TEST_F(ATableWithoutMaster, HasNoRowsOnceItsStoreIsDeleted) {
  LoseMaster();
  delete store_;
  RegainMaster();
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 2, "1")).out,
              HasSubstr("No Such Instance"));
  EXPECT_THAT(Shown(), IsEmpty());
  store_ = AddStore(1, "fans", 1, 2, table_);
  AddRow(1);
  EXPECT_THAT(Shown(), ElementsAre(RowOne()));
}

}  // namespace
