// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowIndex.h"

#include <gmock/gmock.h>

#include <deque>

#include "CountedValue.h"
#include "support/Values.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

// Of a table with the indexes unit, which is signed, and slot, which is not.
class ARowIndex : public testing::Test {
 protected:
  using Row = RowIndex::Row;

  // Adds a row, which stays alive, to the rows and to the index.
  const Row& Add(const std::string& key, Values values) {
    kept_.push_back(std::move(values));
    const Row& row = kept_.back();
    rows_[key] = const_cast<Row*>(&row);
    index_.Add(key, row);
    return row;
  }

  const Row& AddSlot(const std::string& key, int unit, unsigned int slot) {
    return Add(key, Values(Index(Int(unit)), Index(Unsigned(slot))));
  }

  void Remove(const std::string& key) {
    index_.Remove(key, *rows_.at(key));
    rows_.erase(key);
  }

  bool CoversAll() const { return index_.Covers(rows_); }

  static RowIndex::Oid Oid(std::initializer_list<unsigned long> subIds) {
    return RowIndex::Oid(subIds.begin(), subIds.end());
  }

  const Values template_{Int(0), Unsigned(0)};
  RowIndex index_{template_};
  RowIndex::Rows rows_;
  std::deque<Values> kept_;
};

TEST_F(ARowIndex, ListsRowsInTheOrderOfTheirOids) {
  AddSlot("a", 10, 1);
  AddSlot("b", 2, 10);
  AddSlot("c", 2, 9);
  EXPECT_THAT(index_.Indexed(), ElementsAre(Key(Oid({2, 9})), Key(Oid({2, 10})),
                                            Key(Oid({10, 1}))));
  EXPECT_TRUE(CoversAll());
}

TEST_F(ARowIndex, RemembersRowAndSigns) {
  const Row& row = AddSlot("a", 10, 1);
  const auto& place = index_.Indexed().at(Oid({10, 1}));
  EXPECT_EQ(place.row, &row);
  EXPECT_EQ(place.signedIndexes, 1U);
}

TEST_F(ARowIndex, MakesSubIdentifiersOfTheTypesOfTheTable) {
  Add("a", Values(Index(Unsigned(4294967295)), Index(Int(-1))));
  EXPECT_THAT(index_.Indexed(), ElementsAre(Key(Oid({-1UL, 4294967295}))));
  EXPECT_EQ(index_.Indexed().begin()->second.signedIndexes, 2U);
}

TEST_F(ARowIndex, FindsARowByAView) {
  AddSlot("a", 2, 9);
  const unsigned long request[] = {2, 9, 1};
  const auto& indexed = index_.Indexed();
  EXPECT_NE(indexed.find(RowIndex::OidView{request, request + 2}),
            indexed.end());
  EXPECT_EQ(indexed.find(RowIndex::OidView{request, request + 3}),
            indexed.end());
  EXPECT_EQ(indexed.upper_bound(RowIndex::OidView{request, request + 1}),
            indexed.begin());
}

TEST_F(ARowIndex, TakesARowWithAVariableForVolatileAndNeverReadsIt) {
  int* const gone = reinterpret_cast<int*>(alignof(int));
  Values values(Index(Int(1)), Index(Unsigned(1)));
  values[0]->DeleteLocalData();
  values[0]->externalData_ = gone;
  Add("a", std::move(values));
  EXPECT_THAT(index_.Volatile(), ElementsAre("a"));
  EXPECT_THAT(index_.Indexed(), IsEmpty());
  EXPECT_TRUE(CoversAll());
  Remove("a");
  EXPECT_THAT(index_.Volatile(), IsEmpty());
  EXPECT_TRUE(CoversAll());
}

TEST_F(ARowIndex, MakesARowVolatileOnce) {
  const Row& row = AddSlot("a", 1, 1);
  AddSlot("b", 2, 1);
  for (int times = 0; times < 2; ++times) {
    index_.MakeVolatile("a", row);
    EXPECT_THAT(index_.Volatile(), ElementsAre("a"));
    EXPECT_THAT(index_.Indexed(), ElementsAre(Key(Oid({2, 1}))));
    EXPECT_TRUE(CoversAll());
  }
}

TEST_F(ARowIndex, DoesNotCoverARowWithOtherIndexesThanTheTable) {
  const auto refuses = [this](Values values) {
    Add("a", std::move(values));
    const bool covered = CoversAll();
    Remove("a");
    EXPECT_TRUE(CoversAll());
    return !covered;
  };
  EXPECT_TRUE(refuses(Values(Index(Int(1)))));
  EXPECT_TRUE(refuses(Values(Index(Int(1)), Unsigned(1))));
  EXPECT_TRUE(refuses(Values(Index(Int(1)), Index(Int(2)), Index(Int(3)))));
  EXPECT_TRUE(refuses(Values(Index(Int(1)), Index(Text("a")))));
  EXPECT_TRUE(refuses(Values(Index(CountedValue(1)), Index(Int(2)))));
  EXPECT_TRUE(refuses(Values(
      Index(NetSNMPIntNodeData(nullptr, eNodeAccessReadOnly)), Index(Int(2)))));
  EXPECT_FALSE(refuses(Values(Int(7), Index(Int(1)), Index(Int(2)))));
}

TEST_F(ARowIndex, StaysUncoveredAfterAnUnindexableRowWasHandedOut) {
  const Row& row = Add("a", Values(Index(Int(1))));
  index_.MakeVolatile("a", row);
  EXPECT_THAT(index_.Volatile(), IsEmpty());
  EXPECT_FALSE(CoversAll());
}

TEST_F(ARowIndex, DoesNotCoverTwoRowsWithOneOid) {
  Add("a", Values(Index(Int(-1)), Index(Int(-1))));
  Add("b", Values(Index(Int(-1)), Index(Unsigned(4294967295))));
  EXPECT_FALSE(CoversAll());
  Remove("b");
  EXPECT_TRUE(CoversAll());
}

TEST_F(ARowIndex, DoesNotCoverRowsThatItWasNotGiven) {
  AddSlot("a", 1, 1);
  rows_["b"] = rows_["a"];
  EXPECT_FALSE(CoversAll());
  rows_.clear();
  EXPECT_FALSE(CoversAll());
}

TEST_F(ARowIndex, RemovesARowWhoseIndexHasChanged) {
  const Row& row = AddSlot("a", 1, 1);
  AddSlot("b", 2, 1);
  row[0]->NodeDataValue(2, false);
  Remove("a");
  EXPECT_THAT(index_.Indexed(), ElementsAre(Key(Oid({2, 1}))));
  EXPECT_EQ(index_.Indexed().begin()->second.row, rows_.at("b"));
}

TEST_F(ARowIndex, OfATableWithoutIndexesHasOneRow) {
  const Values none;
  RowIndex index{none};
  const Values values(Int(1));
  index.Add("a", values);
  EXPECT_THAT(index.Indexed(), ElementsAre(Key(Oid({}))));
}

}  // namespace
