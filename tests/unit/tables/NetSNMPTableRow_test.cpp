// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableRow.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "CountedValue.h"
#include "support/Layout.h"
#include "support/Values.h"

namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pointee;

int NumberIn(const NetSNMPNodeData* value) {
  return *static_cast<const int*>(value->NodeDataValue());
}

std::vector<int> NumbersIn(const std::vector<NetSNMPNodeData*>& values) {
  std::vector<int> numbers;
  for (const NetSNMPNodeData* value : values) {
    numbers.push_back(NumberIn(value));
  }
  return numbers;
}

std::vector<unsigned int> ColumnsOf(
    const std::vector<NetSNMPNodeData*>& values) {
  std::vector<unsigned int> columns;
  for (const NetSNMPNodeData* value : values) {
    columns.push_back(value->columnNumber_);
  }
  return columns;
}

TEST(ATableRow, PutsIndexesBeforeDataInTheOrderGiven) {
  const NetSNMPTableRow row(
      Values(Int(10), Index(Int(1)), Int(20), Index(Int(2))));
  EXPECT_THAT(NumbersIn(row.indexValues_), ElementsAre(1, 2));
  EXPECT_THAT(NumbersIn(row.dataValues_), ElementsAre(10, 20));
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 2, 10, 20));
  EXPECT_EQ(row.IndexCount(), 2);
}

TEST(ATableRow, NumbersItsColumnsFromOneWithoutGaps) {
  const NetSNMPTableRow row(
      Values(Int(10), Index(Int(1)), Int(20), Index(Int(2))));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(ColumnsOf(row.indexValues_), ElementsAre(1, 2));
  EXPECT_THAT(ColumnsOf(row.dataValues_), ElementsAre(3, 4));
}

TEST(ATableRow, WithoutIndexesHoldsDataAlone) {
  NetSNMPTableRow row(Values(Int(10), Int(20)));
  EXPECT_EQ(row.IndexCount(), 0);
  EXPECT_EQ(row.GetFirstIndex(), nullptr);
  EXPECT_EQ(row.GetNextIndex(), nullptr);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(10, 20));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2));
}

TEST(ATableRow, OfNoValuesIsEmpty) {
  NetSNMPTableRow row{std::vector<NetSNMPNodeData*>()};
  EXPECT_THAT(row.fullRow_, IsEmpty());
  EXPECT_EQ(row.GetFirstIndex(), nullptr);
}

TEST(ATableRow, MarksItsCopiesAsCellsAndIndexes) {
  NetSNMPTableRow row(Values(Index(Int(1)), Int(10)));
  for (const auto* const values :
       {&row.indexValues_, &row.dataValues_, &row.fullRow_}) {
    for (const NetSNMPNodeData* value : *values) EXPECT_TRUE(value->tableData_);
  }
  const auto isIndex = [](bool expected) {
    return Pointee(Field(&NetSNMPNodeData::isIndex_, expected));
  };
  EXPECT_THAT(row.indexValues_, ElementsAre(isIndex(true)));
  EXPECT_THAT(row.dataValues_, ElementsAre(isIndex(false)));
  EXPECT_THAT(row.fullRow_, ElementsAre(isIndex(true), isIndex(false)));
  row.AddIndex(Int(2), true);
  row.AppendData(Index(Int(20)), true);
  EXPECT_THAT(row.fullRow_, ElementsAre(isIndex(true), isIndex(true),
                                        isIndex(false), isIndex(false)));
}

TEST(ATableRow, LeavesTheCallersValuesAsTheyAre) {
  const Values values(Index(Int(1)), Int(10));
  NetSNMPTableRow row(values);
  row.AddIndex(*values[1], true);
  row.AppendData(*values[0], true);
  for (const std::size_t position : {0, 1}) {
    EXPECT_EQ(values[position]->isIndex_, position == 0);
    EXPECT_FALSE(values[position]->tableData_);
    EXPECT_EQ(values[position]->columnNumber_, 0U);
  }
}

TEST(ATableRow, IsIndependentOfTheValuesItWasBuiltFrom) {
  const Values values(Index(Int(1)), Int(10));
  const NetSNMPTableRow row(values);
  row.fullRow_[1]->NodeDataValue(11, false);
  row.dataValues_[0]->NodeDataValue(12, false);
  EXPECT_EQ(NumberIn(values[1]), 10);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 11));
}

TEST(ATableRow, WorksOnTheVariablesThatItsValuesPointAt) {
  int speed = 10;
  const NetSNMPTableRow row(
      Values(Index(Int(1)), NetSNMPIntNodeData(&speed, eNodeAccessReadWrite)));
  row.fullRow_[1]->NodeDataValue(11, false);
  EXPECT_EQ(speed, 11);
}

TEST(ATableRow, RenumbersItsDataWhenAnIndexIsAdded) {
  NetSNMPTableRow row(Values(Index(Int(1)), Int(10), Int(20)));
  row.AddIndex(Int(2), true);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 2, 10, 20));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(ColumnsOf(row.dataValues_), ElementsAre(3, 4));
}

TEST(ATableRow, TakesNewDataBehindItsLastColumn) {
  NetSNMPTableRow row(Values(Index(Int(1)), Int(10)));
  row.AppendData(Int(20), true);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 10, 20));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2, 3));
}

TEST(ATableRow, KeepsAStaleFullRowUntilItIsRebuilt) {
  NetSNMPTableRow row(Values(Index(Int(1)), Int(10)));
  row.AddIndex(Int(2), false);
  NetSNMPIntNodeData appended = Int(20);
  appended.columnNumber_ = 77;
  row.AppendData(appended, false);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 10));
  EXPECT_THAT(ColumnsOf(row.indexValues_), ElementsAre(1, 2));
  EXPECT_THAT(ColumnsOf(row.dataValues_), ElementsAre(2, 77));
  row.RebuildTableRow();
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(1, 2, 10, 20));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2, 3, 4));
}

TEST(ATableRow, WalksItsIndexesAndStaysAtTheEnd) {
  NetSNMPTableRow row(Values(Index(Int(1)), Int(10), Index(Int(2))));
  for (int walk = 0; walk < 2; ++walk) {
    EXPECT_EQ(row.GetFirstIndex(), row.indexValues_[0]);
    EXPECT_EQ(row.GetNextIndex(), row.indexValues_[1]);
    EXPECT_EQ(row.GetNextIndex(), nullptr);
    EXPECT_EQ(row.GetNextIndex(), nullptr);
  }
}

TEST(ATableRow, CanBeFilledAgainOnceItWasEmptied) {
  NetSNMPTableRow row(Values(Index(Int(1)), Index(Int(2)), Int(10)));
  row.GetFirstIndex();
  row.GetNextIndex();
  row.EmptyRow();
  EXPECT_THAT(row.indexValues_, IsEmpty());
  EXPECT_THAT(row.dataValues_, IsEmpty());
  EXPECT_THAT(row.fullRow_, IsEmpty());
  EXPECT_EQ(row.GetNextIndex(), nullptr);
  row.AppendData(Int(20), false);
  row.AddIndex(Int(3), true);
  EXPECT_THAT(NumbersIn(row.fullRow_), ElementsAre(3, 20));
  EXPECT_THAT(ColumnsOf(row.fullRow_), ElementsAre(1, 2));
}

TEST(ATableRow, KeepsClonesOfTheClassOfItsValuesAndDeletesThem) {
  {
    const NetSNMPTableRow row(Values(Index(CountedValue(1)), CountedValue(10)));
    EXPECT_EQ(CountedValue::Alive(), 4);
    for (const NetSNMPNodeData* value : row.fullRow_) {
      EXPECT_NE(dynamic_cast<const CountedValue*>(value), nullptr);
    }
  }
  EXPECT_EQ(CountedValue::Alive(), 0);
}

TEST(ATableRow, LeavesNothingBehindWhenMemoryRunsOut) {
  const Values values(Index(CountedValue(1)), CountedValue(10));
  int clones = 0;
  for (bool built = false; !built; ++clones) {
    const CloneLimit limit(clones);
    try {
      const NetSNMPTableRow row(values);
      built = true;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(CountedValue::Alive(), 2) << "clone " << clones;
    }
  }
  EXPECT_GT(clones, 1);
}

TEST(ATableRow, HasItsFieldsInTheirFixedOrder) {
  const NetSNMPTableRow row{std::vector<NetSNMPNodeData*>()};
  EXPECT_TRUE(LieInOrder({&row, &row.indexValues_, &row.indexCursor_,
                          &row.dataValues_, &row.fullRow_}));
  EXPECT_EQ(reinterpret_cast<const char*>(&row.indexValues_) -
                reinterpret_cast<const char*>(&row),
            static_cast<std::ptrdiff_t>(sizeof(void*)));
}

TEST(ATableRow, HasAVirtualDestructorAndIsNeverCopied) {
  EXPECT_TRUE(std::has_virtual_destructor<NetSNMPTableRow>::value);
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPTableRow>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPTableRow>::value);
}

}  // namespace
