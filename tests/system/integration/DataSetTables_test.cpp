// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Session.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddDataSetTable;
using support::CellOid;
using support::Session;
using support::TableOid;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::CommandResult;

namespace {

// A table of events: number, text and severity. Column 2 of each row shows its
// last value, the severity.
class ADataSetTable : public testing::Test {
 protected:
  ADataSetTable() {
    session_.Connect();
    table_ = AddEvents();
  }

  static NetSNMPDataSetTableNode* AddEvents() {
    return AddDataSetTable(1, "events",
                           Values(Unsigned(0), Text("", eNodeAccessReadWrite),
                                  Int(0, eNodeAccessReadWrite)));
  }

  void AddRow(unsigned int number, int severity) {
    EXPECT_TRUE(table_->AddRow(Values(Unsigned(number), Text("door open"),
                                      Int(severity, eNodeAccessReadWrite))));
  }

  static std::string Severity(unsigned int number) {
    return CellOid(1, 2, std::to_string(number));
  }

  std::vector<std::string> Walked() const {
    return session_.Manager().Objects(TableOid(1));
  }

  Session session_;
  NetSNMPDataSetTableNode* table_ = nullptr;
};

TEST_F(ADataSetTable, ShowsTheLastValueOfEachRow) {
  for (const unsigned int number : {10, 2, 1}) AddRow(number, 5);
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 5",
                                    Severity(2) + " = INTEGER: 5",
                                    Severity(10) + " = INTEGER: 5"));
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 3, "1")).out,
              HasSubstr("No Such Instance"));
  EXPECT_THAT(session_.Manager().Get(Severity(3)).out,
              HasSubstr("No Such Instance"));
}

TEST_F(ADataSetTable, IsWalkedByGetBulk) {
  for (unsigned int number = 1; number <= 25; ++number) AddRow(number, 5);
  std::vector<std::string> lines =
      session_.Manager().BulkWalk(TableOid(1)).Lines();
  ASSERT_GE(lines.size(), 25U);
  lines.resize(25);
  EXPECT_THAT(lines, ElementsAreArray(Walked()));
}

TEST_F(ADataSetTable, KeepsTheFirstOfTwoRowsWithTheSameIndex) {
  AddRow(1, 5);
  AddRow(1, 6);
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 5"));
}

TEST_F(ADataSetTable, TakesASetOfACell) {
  AddRow(1, 5);
  const CommandResult result = session_.Set({Severity(1), "i", "6"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 6"));
  EXPECT_THAT(session_.Set({Severity(1), "s", "text"}).error,
              HasSubstr("wrongType"));
}

TEST_F(ADataSetTable, TakesASetOfSeveralRows) {
  AddRow(1, 5);
  AddRow(2, 5);
  const CommandResult result =
      session_.Set({Severity(2), "i", "7", Severity(1), "i", "6"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 6",
                                    Severity(2) + " = INTEGER: 7"));
}

TEST_F(ADataSetTable, RefusesASetOfACellAndOfItself) {
  AddRow(1, 5);
  EXPECT_THAT(
      session_.Set({TableOid(1), "i", "6", Severity(1), "i", "6"}).error,
      HasSubstr("notWritable"));
  EXPECT_THAT(
      session_.Set({Severity(1), "i", "6", TableOid(1), "i", "6"}).error,
      HasSubstr("notWritable"));
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 5"));
}

TEST_F(ADataSetTable, RefusesASetOfACellThatIsNotWritable) {
  EXPECT_TRUE(table_->AddRow(Values(Unsigned(1), Text("door open"), Int(5))));
  EXPECT_THAT(session_.Set({Severity(1), "i", "6"}).error,
              HasSubstr("notWritable"));
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 5"));
}

TEST_F(ADataSetTable, LetsManagersCreateRows) {
  AddRow(1, 5);
  const CommandResult result = session_.Set(
      {CellOid(1, 2, "7"), "s", "created", CellOid(1, 3, "7"), "i", "3"});
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_THAT(Walked(), ElementsAre(Severity(1) + " = INTEGER: 5",
                                    Severity(7) + " = STRING: \"created\"",
                                    CellOid(1, 3, "7") + " = INTEGER: 3"));
  delete table_;
  EXPECT_THAT(Walked(), IsEmpty());
}

TEST_F(ADataSetTable, StaysEmptyWhenItsNodeIsDeleted) {
  AddRow(1, 5);
  delete table_;
  EXPECT_THAT(Walked(), IsEmpty());
  EXPECT_THAT(session_.Manager().Get(Severity(1)).out,
              HasSubstr("No Such Instance"));
  table_ = AddEvents();
  EXPECT_FALSE(table_->registered_);
  AddRow(2, 5);
  EXPECT_THAT(Walked(), IsEmpty());
}

}  // namespace
