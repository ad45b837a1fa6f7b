// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "NetSNMPAgentGuard.h"
#include "support/Session.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::Session;
using testing::HasSubstr;
using testkit::CommandResult;

namespace {

// A SET of cells of a table whose rows 1 and 2 have the columns speed (2, over
// a variable of the application), limit (3, a copy), and name (4,
// read-only).
class ATableSet : public testing::Test {
 protected:
  ATableSet() {
    session_.Connect();
    AddRow(1, 70);
    AddRow(2, 80);
  }

  void AddRow(int row, int limit) {
    const NetSNMPAgentGuard guard;
    EXPECT_TRUE(store_->AddRow(Values(
        Index(Int(row)), NetSNMPIntNodeData(&speed_[row], eNodeAccessReadWrite),
        Int(limit, eNodeAccessReadWrite), Text("fan"))));
  }

  static std::string Speed(int row) {
    return CellOid(1, 2, std::to_string(row));
  }
  static std::string Limit(int row) {
    return CellOid(1, 3, std::to_string(row));
  }

  std::string Shown(const std::string& oid) const {
    return session_.Manager().Get(oid).out;
  }

  int SpeedOf(int row) const {
    const NetSNMPAgentGuard guard;
    return speed_[row];
  }

  // The number in the stored row.
  int StoredIn(int row, std::size_t position) const {
    const NetSNMPAgentGuard guard;
    const auto* const stored = store_->GetRow("fans." + std::to_string(row));
    return *static_cast<int*>(stored->at(position)->NodeDataValue());
  }

  void ExpectRefused(const CommandResult& result, const std::string& reason) {
    EXPECT_FALSE(result.Succeeded()) << result;
    EXPECT_THAT(result.error, HasSubstr(reason));
    EXPECT_EQ(SpeedOf(1), 10);
    EXPECT_EQ(SpeedOf(2), 20);
  }

  int speed_[3] = {0, 10, 20};
  Session session_;
  NetSNMPTableEntryNode* const store_ =
      AddStore(1, "fans", 1, 4, AddTable(1, "fanTable", [](NetSNMPDataNode*) {
                 ADD_FAILURE() << "callback called";
               }));
};

TEST_F(ATableSet, OverAVariableIsSeenByTheApplicationAndTheNextGet) {
  const CommandResult result = session_.Set({Speed(1), "i", "15"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_EQ(SpeedOf(1), 15);
  EXPECT_EQ(StoredIn(1, 1), 15);
  EXPECT_THAT(Shown(Speed(1)), HasSubstr("INTEGER: 15"));
  EXPECT_THAT(Shown(Speed(2)), HasSubstr("INTEGER: 20"));
}

TEST_F(ATableSet, OfACopiedValueShowsOnlyOnceTheApplicationStoresTheRowAgain) {
  const CommandResult result = session_.Set({Limit(1), "i", "75"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_EQ(StoredIn(1, 2), 70);
  EXPECT_THAT(Shown(Limit(1)), HasSubstr("INTEGER: 70"));
  AddRow(1, 75);
  EXPECT_THAT(Shown(Limit(1)), HasSubstr("INTEGER: 75"));
}

TEST_F(ATableSet, OfSeveralCellsAndRowsWritesThemAll) {
  const CommandResult result = session_.Set(
      {Speed(2), "i", "25", Limit(1), "i", "75", Speed(1), "i", "15"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_EQ(SpeedOf(1), 15);
  EXPECT_EQ(SpeedOf(2), 25);
}

TEST_F(ATableSet, OfSeveralCellsWritesNoneIfOneIsRefused) {
  ExpectRefused(
      session_.Set({Speed(1), "i", "15", CellOid(1, 4, "2"), "s", "pump"}),
      "notWritable");
  ExpectRefused(session_.Set({Speed(1), "i", "15", Speed(2), "s", "abc"}),
                "badValue");
  ExpectRefused(session_.Set({Speed(1), "i", "15", Speed(3), "i", "30"}),
                "noCreation");
}

TEST_F(ATableSet, OfAnIndexOrAColumnThatIsNotThereIsRefused) {
  for (const unsigned int column : {1U, 5U}) {
    ExpectRefused(session_.Set({CellOid(1, column, "1"), "i", "2"}),
                  "notWritable");
  }
}

TEST_F(ATableSet, GoesToTheRowThatIsThereNow) {
  {
    const NetSNMPAgentGuard guard;
    store_->RemoveRow("fans.1");
  }
  ExpectRefused(session_.Set({Speed(1), "i", "15"}), "noCreation");
  AddRow(1, 70);
  EXPECT_TRUE(session_.Set({Speed(1), "i", "15"}).Succeeded());
  EXPECT_EQ(SpeedOf(1), 15);
}

}  // namespace
