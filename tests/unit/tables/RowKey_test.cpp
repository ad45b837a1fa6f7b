// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowKey.h"

#include <limits>

#include "support/TableTest.h"
#include "tables/RowLookup.h"

namespace {

class RowKey : public TableTest {
 protected:
  // The key of a row, with its number of indexes behind a blank.
  std::string KeyOf(const Values& values) const {
    std::string key = "replaced";
    const int indexes = store_->GetRowName(values, key);
    return key + ' ' + std::to_string(indexes);
  }

  NetSNMPTableEntryNode* const store_ = BuildPortStore(nullptr);
};

TEST_F(RowKey, ListsTheIntegerIndexesInTheirOrder) {
  EXPECT_EQ(KeyOf(Values(Index(Int(3)), Index(Unsigned(7)))), "port.3.7 2");
  EXPECT_EQ(KeyOf(Values(Index(Unsigned(7)), Index(Int(3)))), "port.7.3 2");
}

TEST_F(RowKey, ShowsNumbersInPlainDecimal) {
  EXPECT_EQ(KeyOf(Values(Index(Int(0)))), "port.0 1");
  EXPECT_EQ(KeyOf(Values(Index(Int(-1)))), "port.-1 1");
  EXPECT_EQ(KeyOf(Values(Index(Int(1234567)))), "port.1234567 1");
  EXPECT_EQ(KeyOf(Values(Index(Unsigned(4294967295)))), "port.4294967295 1");
  EXPECT_EQ(KeyOf(Values(Index(Int(std::numeric_limits<int>::min())))),
            "port.-2147483648 1");
}

TEST_F(RowKey, PassesOverIndexesOfOtherTypes) {
  EXPECT_EQ(KeyOf(Values(Index(Text("a")), Index(Int(2)))), "port.2 1");
  EXPECT_EQ(KeyOf(Values(Index(Bool(true)))), "port 0");
}

TEST_F(RowKey, PassesOverDataInBetween) {
  EXPECT_EQ(KeyOf(Values(Int(8), Index(Int(1)), Int(9), Index(Int(2)))),
            "port.1.2 2");
}

TEST_F(RowKey, OfARowWithoutIndexesIsThePrefix) {
  EXPECT_EQ(KeyOf(Values(Int(8))), "port 0");
  EXPECT_EQ(KeyOf(Values()), "port 0");
}

TEST_F(RowKey, PassesOverAnIndexWithoutStorage) {
  EXPECT_EQ(
      KeyOf(Values(Index(NetSNMPIntNodeData(nullptr, eNodeAccessReadOnly)))),
      "port 0");
}

TEST_F(RowKey, ReadsTheVariablesOfTheApplication) {
  int unit = 5;
  const Values row(Index(NetSNMPIntNodeData(&unit, eNodeAccessReadOnly)));
  EXPECT_EQ(KeyOf(row), "port.5 1");
  unit = 6;
  EXPECT_EQ(KeyOf(row), "port.6 1");
}

// As the selector finds the row again.
TEST_F(RowKey, IsThatOfTheIndexedRow) {
  const Values row(Index(Int(-1)), Int(8), Index(Unsigned(4294967295)));
  ASSERT_TRUE(store_->AddRow(row));
  const RowIndex& index = RowLookup::Of(*store_).index;
  ASSERT_EQ(index.Indexed().size(), 1U);
  EXPECT_EQ(row_key::Of("port", *index.Indexed().begin()),
            "port.-1.4294967295");
}

}  // namespace
