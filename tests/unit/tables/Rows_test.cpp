// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "CountedValue.h"
#include "support/TableTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class Rows : public TableTest {
 protected:
  // The keys of all rows in the order of a walk.
  static std::vector<std::string> Walk(NetSNMPTableEntryNode& store) {
    std::vector<std::string> keys;
    for (const StoredRow* row = store.GetFirstRow(); row != nullptr;
         row = store.GetNextRow()) {
      keys.emplace_back();
      store.GetRowName(*row, keys.back());
    }
    return keys;
  }

  static int SpeedIn(const StoredRow* row) {
    return *static_cast<int*>(row->at(2)->NodeDataValue());
  }

  NetSNMPTableEntryNode& store_ = *BuildPortStore(nullptr);
};

using RowCursor = Rows;

TEST_F(Rows, AreFiledUnderTheirKeys) {
  EXPECT_TRUE(store_.AddRow(Port(1, 2, 10)));
  EXPECT_TRUE(store_.AddRow(Port(1, 3, 20)));
  ASSERT_NE(store_.GetRow("port.1.2"), nullptr);
  EXPECT_THAT(*store_.GetRow("port.1.2"), SizeIs(5));
  EXPECT_EQ(SpeedIn(store_.GetRow("port.1.2")), 10);
  EXPECT_EQ(SpeedIn(store_.GetRow("port.1.3")), 20);
  EXPECT_EQ(store_.GetRow("port.1"), nullptr);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Rows, AreClonesInTheCallersOrder) {
  StoredRow* stored = nullptr;
  {
    const Values values(Int(30), Index(Unsigned(2)), Index(Int(1)));
    ASSERT_TRUE(store_.AddRow(values));
    stored = store_.GetRow("port.2.1");
    ASSERT_NE(stored, nullptr);
    ASSERT_THAT(*stored, SizeIs(3));
    for (const std::size_t position : {0, 1, 2}) {
      EXPECT_NE(stored->at(position), values[position]);
    }
    EXPECT_TRUE(stored->at(1)->isIndex_);
    EXPECT_FALSE(values[1]->tableData_);
  }
  EXPECT_EQ(*static_cast<int*>(stored->at(0)->NodeDataValue()), 30);
}

TEST_F(Rows, MayHaveNullElements) {
  const Values port = Port(1, 2, 10);
  StoredRow values = port;
  values[2] = nullptr;
  EXPECT_TRUE(store_.AddRow(values));
  const StoredRow* const row = store_.GetRow("port.1.2");
  ASSERT_NE(row, nullptr);
  ASSERT_THAT(*row, SizeIs(5));
  EXPECT_EQ(row->at(2), nullptr);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Rows, AreRefusedWithoutEnoughIntegerIndexes) {
  ASSERT_TRUE(store_.AddRow(Port(1, 2, 10)));
  EXPECT_FALSE(store_.AddRow(Values(Index(Int(1)), Int(2), Int(20))));
  EXPECT_FALSE(store_.AddRow(Values(Index(Text("a")), Index(Int(2)))));
  EXPECT_FALSE(
      store_.AddRow(Values(Index(Int(1)), Index(Int(2)), Index(Int(3)))));
  EXPECT_FALSE(store_.AddRow(Values()));
  EXPECT_THAT(Walk(store_), ElementsAre("port.1.2"));
  EXPECT_EQ(SpeedIn(store_.GetRow("port.1.2")), 10);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Rows, WithAStringAsOnlyIndexAreRefused) {
  auto* const store = BuildStore("textStore", Values(Text("")), 2, nullptr);
  EXPECT_FALSE(store->AddRow(Values(Index(Text("a")), Int(1))));
  EXPECT_EQ(store->GetFirstRow(), nullptr);
}

TEST_F(Rows, AreNotCheckedBeyondTheNumberOfTheirIndexes) {
  EXPECT_TRUE(store_.AddRow(Values(Index(Unsigned(1)), Index(Int(2)))));
  EXPECT_TRUE(
      store_.AddRow(Values(Index(Text("a")), Index(Int(3)), Index(Int(4)),
                           Int(1), Int(2), Int(3), Int(4), Int(5))));
  EXPECT_THAT(Walk(store_), ElementsAre("port.1.2", "port.3.4"));
}

TEST_F(Rows, ReplaceTheOneUnderTheSameKey) {
  auto* const store = BuildStore("counted", Values(Int(0)), 2, nullptr);
  ASSERT_TRUE(store->AddRow(Values(Index(CountedValue(1)), CountedValue(10))));
  ASSERT_TRUE(store->AddRow(Values(Index(CountedValue(1)), CountedValue(20))));
  EXPECT_EQ(CountedValue::Alive(), 2);
  EXPECT_EQ(*static_cast<int*>(store->GetRow("port.1")->at(1)->NodeDataValue()),
            20);
  EXPECT_THAT(Walk(*store), ElementsAre("port.1"));
}

TEST_F(Rows, MayBeReplacedByThemselves) {
  ASSERT_TRUE(store_.AddRow(Port(1, 2, 10)));
  EXPECT_TRUE(store_.AddRow(*store_.GetRow("port.1.2")));
  EXPECT_EQ(SpeedIn(store_.GetRow("port.1.2")), 10);
}

TEST_F(Rows, StayWhenThereIsNoMemoryForTheirSuccessors) {
  auto* const store = BuildStore("counted", Values(Int(0)), 2, nullptr);
  const Values row(Index(CountedValue(1)), CountedValue(10));
  ASSERT_TRUE(store->AddRow(row));
  for (const int clones : {0, 1}) {
    const CloneLimit limit(clones);
    EXPECT_THROW(store->AddRow(row), std::bad_alloc);
    EXPECT_NE(store->GetRow("port.1"), nullptr);
  }
  EXPECT_EQ(CountedValue::Alive(), 4);
}

TEST_F(Rows, WithoutIndexesReplaceEachOther) {
  auto* const store = BuildStore("single", Values(), 1, nullptr);
  EXPECT_TRUE(store->AddRow(Values(Int(1), Int(2), Int(10))));
  EXPECT_TRUE(store->AddRow(Values(Int(1), Int(2), Int(20))));
  EXPECT_THAT(store->rows_, ElementsAre(Pair("port", testing::_)));
  EXPECT_EQ(SpeedIn(store->GetRow("port")), 20);
}

TEST_F(Rows, AreDeletedWhenTheyAreRemoved) {
  auto* const store = BuildStore("counted", Values(Int(0)), 1, nullptr);
  ASSERT_TRUE(store->AddRow(Values(Index(CountedValue(1)))));
  EXPECT_TRUE(store->RemoveRow("port.1"));
  EXPECT_EQ(CountedValue::Alive(), 0);
  EXPECT_EQ(store->GetRow("port.1"), nullptr);
  EXPECT_FALSE(store->RemoveRow("port.1"));
  EXPECT_FALSE(store->RemoveRow(""));
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RowCursor, IsAtTheEndAtFirst) {
  EXPECT_EQ(store_.GetNextRow(), nullptr);
  EXPECT_EQ(store_.GetFirstRow(), nullptr);
  ASSERT_TRUE(store_.AddRow(Port(1, 2, 10)));
  EXPECT_EQ(store_.GetNextRow(), nullptr);
}

TEST_F(RowCursor, VisitsRowsInTheTextOrderOfTheirKeys) {
  auto* const store = BuildStore("ports", Values(), 1, nullptr);
  for (const char* key : {"port.2", "port.10", "port.2.1"}) {
    store->rows_.emplace(key, new StoredRow);
  }
  EXPECT_EQ(store->GetFirstRow(), store->GetRow("port.10"));
  EXPECT_EQ(store->GetNextRow(), store->GetRow("port.2"));
  EXPECT_EQ(store->GetNextRow(), store->GetRow("port.2.1"));
  EXPECT_EQ(store->GetNextRow(), nullptr);
}

TEST_F(RowCursor, StaysAtTheEndAndStartsAnew) {
  ASSERT_TRUE(store_.AddRow(Port(1, 2, 10)));
  for (int walk = 0; walk < 2; ++walk) {
    EXPECT_EQ(store_.GetFirstRow(), store_.GetRow("port.1.2"));
    for (int past = 0; past < 3; ++past) {
      EXPECT_EQ(store_.GetNextRow(), nullptr);
    }
  }
}

TEST_F(RowCursor, IsAtTheEndOnceTheRowUnderItIsRemoved) {
  for (const int unit : {1, 2, 3}) ASSERT_TRUE(store_.AddRow(Port(unit, 1, 0)));
  store_.GetFirstRow();
  store_.GetNextRow();
  ASSERT_TRUE(store_.RemoveRow("port.2.1"));
  EXPECT_EQ(store_.GetNextRow(), nullptr);
  EXPECT_THAT(Walk(store_), ElementsAre("port.1.1", "port.3.1"));
}

TEST_F(RowCursor, GoesOnWhenOtherRowsComeAndGo) {
  for (const int unit : {1, 2, 4}) ASSERT_TRUE(store_.AddRow(Port(unit, 1, 0)));
  store_.GetFirstRow();
  ASSERT_TRUE(store_.RemoveRow("port.2.1"));
  ASSERT_TRUE(store_.AddRow(Port(3, 1, 0)));
  ASSERT_TRUE(store_.AddRow(Port(1, 1, 5)));
  EXPECT_EQ(store_.GetNextRow(), store_.GetRow("port.3.1"));
  EXPECT_EQ(store_.GetNextRow(), store_.GetRow("port.4.1"));
  EXPECT_EQ(store_.GetNextRow(), nullptr);
}

}  // namespace
