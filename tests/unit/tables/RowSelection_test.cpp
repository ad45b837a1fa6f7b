// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelection.h"

#include "NetSNMP.h"
#include "support/TableTest.h"
#include "tables/RowLookup.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Of a store with the ports 1.1, 2.1 and 10.1, whose keys have another order.
class ARowSelection : public TableTest {
 protected:
  ARowSelection() {
    for (const int unit : {1, 2, 10}) store_.AddRow(Port(unit, 1, 0));
  }

  Lookup AddExact(unsigned long unit) {
    const unsigned long oid[] = {unit, 1};
    return selection_.AddExact(&request_, {oid, oid + 2});
  }

  Lookup AddNext(unsigned long unit, unsigned long slot = 1) {
    const unsigned long oid[] = {unit, slot};
    return selection_.AddNext(&request_, {oid, oid + 2});
  }

  // The keys of the rows that the hooks would hand out.
  std::vector<std::string> Selected(RowSelection& selection) const {
    std::vector<std::string> keys;
    for (const StoredRow* row = selection.First(); row != nullptr;
         row = selection.Next()) {
      EXPECT_EQ(store_.rowCursor_->second, row);
      keys.push_back(store_.rowCursor_->first);
    }
    EXPECT_EQ(selection.Next(), nullptr);
    EXPECT_EQ(store_.rowCursor_, store_.rows_.end());
    return keys;
  }

  // Without handing them out.
  StoredRow* RowOf(const std::string& key) const {
    return store_.rows_.at(key);
  }

  NetSNMPTableEntryNode& store_ = *BuildPortStore(nullptr);
  netsnmp_request_info request_{};
  RowSelection selection_{store_};
};

TEST_F(ARowSelection, KnowsTheRowOfAGet) {
  EXPECT_EQ(selection_.AddVolatile(), Lookup::kExact);
  EXPECT_EQ(AddExact(2), Lookup::kExact);
  ASSERT_THAT(selection_.AllMatches(), SizeIs(1));
  const RowSelection::Match& match = selection_.AllMatches().front();
  EXPECT_EQ(match.request, &request_);
  EXPECT_THAT(*match.index, ElementsAre(2, 1));
  EXPECT_EQ(match.place, store_.rows_.find("port.2.1"));
  EXPECT_THAT(Selected(selection_), ElementsAre("port.2.1"));
}

TEST_F(ARowSelection, HasNoCandidateForAnAbsentRow) {
  EXPECT_EQ(AddExact(3), Lookup::kCandidates);
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
  EXPECT_THAT(Selected(selection_), IsEmpty());
}

TEST_F(ARowSelection, KnowsTheNextRowInTheOrderOfTheIndexes) {
  EXPECT_EQ(AddNext(2), Lookup::kExact);
  EXPECT_EQ(AddNext(1, 0), Lookup::kExact);
  ASSERT_THAT(selection_.AllMatches(), SizeIs(2));
  EXPECT_THAT(*selection_.AllMatches()[0].index, ElementsAre(10, 1));
  EXPECT_THAT(*selection_.AllMatches()[1].index, ElementsAre(1, 1));
}

TEST_F(ARowSelection, HasTheFirstRowAsACandidateBehindTheLast) {
  EXPECT_EQ(AddNext(10), Lookup::kCandidates);
  EXPECT_THAT(Selected(selection_), ElementsAre("port.1.1"));
}

TEST_F(ARowSelection, HasTheFirstRowAsACandidateFromBeforeTheRows) {
  EXPECT_EQ(selection_.AddFirst(), Lookup::kCandidates);
  EXPECT_THAT(Selected(selection_), ElementsAre("port.1.1"));
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
}

TEST_F(ARowSelection, OfAnEmptyStoreHasNoRow) {
  for (const char* key : {"port.1.1", "port.2.1", "port.10.1"}) {
    store_.RemoveRow(key);
  }
  EXPECT_EQ(selection_.AddFirst(), Lookup::kCandidates);
  EXPECT_THAT(Selected(selection_), IsEmpty());
}

TEST_F(ARowSelection, HandsOutEachRowOnceInTheOrderOfTheKeys) {
  for (const unsigned long unit : {2, 10, 2, 1}) AddExact(unit);
  selection_.Activate(Lookup::kCandidates);
  EXPECT_THAT(Selected(selection_),
              ElementsAre("port.1.1", "port.10.1", "port.2.1"));
}

TEST_F(ARowSelection, HasVolatileRowsAsCandidatesOfEachRequest) {
  store_.GetRow("port.10.1");
  EXPECT_EQ(selection_.AddVolatile(), Lookup::kCandidates);
  EXPECT_EQ(AddExact(1), Lookup::kCandidates);
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
  EXPECT_THAT(Selected(selection_), ElementsAre("port.10.1", "port.1.1"));
}

TEST_F(ARowSelection, NeedsAWalkAfterAVolatileRowHasLostAnIndex) {
  store_.GetRow("port.10.1")->at(0)->isIndex_ = false;
  EXPECT_EQ(selection_.AddVolatile(), Lookup::kWalkAll);
}

TEST_F(ARowSelection, NeedsAWalkWithARowOfOtherIndexes) {
  store_.AddRow(Values(Index(Text("a")), Index(Int(3)), Index(Int(4))));
  EXPECT_EQ(selection_.AddVolatile(), Lookup::kWalkAll);
}

TEST_F(ARowSelection, NeedsAWalkAfterRowsWereExchangedWithoutTheStore) {
  std::swap(store_.rows_["port.1.1"], store_.rows_["port.2.1"]);
  EXPECT_EQ(selection_.AddVolatile(), Lookup::kExact);
  EXPECT_EQ(AddExact(1), Lookup::kWalkAll);
  EXPECT_EQ(AddNext(1), Lookup::kWalkAll);
  EXPECT_EQ(selection_.AddFirst(), Lookup::kWalkAll);
}

TEST_F(ARowSelection, IsThatOfTheStoreWhileItIsActive) {
  const RowLookup& lookup = RowLookup::Of(store_);
  selection_.Activate(Lookup::kCandidates);
  {
    RowSelection inner(store_);
    EXPECT_EQ(lookup.selection, &selection_);
    inner.Activate(Lookup::kCandidates);
    EXPECT_EQ(lookup.selection, &inner);
  }
  EXPECT_EQ(lookup.selection, &selection_);
}

TEST_F(ARowSelection, SelectsNothingWhereAllRowsAreWalked) {
  AddExact(2);
  selection_.Activate(Lookup::kWalkAll);
  EXPECT_TRUE(selection_.WalksAll());
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
  EXPECT_EQ(selection_.EntryOf(&request_, RowOf("port.2.1")), nullptr);
}

TEST_F(ARowSelection, LeavesTheCursorAtTheLastRowOfAGet) {
  AddExact(10);
  AddExact(2);
  selection_.Activate(Lookup::kCandidates);
  selection_.EndWalk(true);
  EXPECT_EQ(store_.rowCursor_, store_.rows_.find("port.2.1"));
  selection_.EndWalk(false);
  EXPECT_EQ(store_.rowCursor_, store_.rows_.end());
}

TEST_F(ARowSelection, TellsTheKeyOfTheRowOfARequest) {
  AddExact(2);
  const auto* const entry = selection_.EntryOf(&request_, RowOf("port.2.1"));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->first, "port.2.1");
  EXPECT_EQ(selection_.EntryOf(&request_, RowOf("port.1.1")), nullptr);
}

TEST_F(ARowSelection, TellsTheKeyOfACandidateThatTheIteratorChose) {
  selection_.AddFirst();
  const auto* const entry = selection_.EntryOf(&request_, RowOf("port.1.1"));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->first, "port.1.1");
  EXPECT_EQ(selection_.EntryOf(&request_, RowOf("port.2.1")), nullptr);
}

TEST_F(ARowSelection, HasNoEntryOfARowThatIsReplaced) {
  AddExact(2);
  const StoredRow* const row = RowOf("port.2.1");
  store_.AddRow(Port(2, 1, 5));
  EXPECT_EQ(selection_.EntryOf(&request_, row), nullptr);
}

TEST_F(ARowSelection, HasNoEntryOfARowThatIsRemovedMeanwhile) {
  AddExact(2);
  selection_.Activate(Lookup::kCandidates);
  RowSelection inner(store_);
  inner.Activate(Lookup::kCandidates);
  const StoredRow* const row = RowOf("port.2.1");
  store_.RemoveRow("port.2.1");
  EXPECT_EQ(selection_.EntryOf(&request_, row), nullptr);
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
  EXPECT_THAT(Selected(selection_), IsEmpty());
}

TEST_F(ARowSelection, GoesOnBehindARowThatWasRemoved) {
  for (const unsigned long unit : {1, 10, 2}) AddExact(unit);
  selection_.Activate(Lookup::kCandidates);
  selection_.First();
  EXPECT_EQ(selection_.Next(), RowOf("port.10.1"));
  store_.RemoveRow("port.1.1");
  EXPECT_EQ(selection_.Next(), RowOf("port.2.1"));
}

TEST_F(ARowSelection, EndsItsWalkWhenTheRowAtItsCursorIsRemoved) {
  for (const unsigned long unit : {1, 10, 2}) AddExact(unit);
  selection_.Activate(Lookup::kCandidates);
  selection_.First();
  selection_.Next();
  store_.RemoveRow("port.10.1");
  EXPECT_EQ(selection_.Next(), nullptr);
  EXPECT_EQ(selection_.First(), RowOf("port.1.1"));
}

TEST_F(ARowSelection, OutlivesItsStore) {
  const StoredRow* const row = RowOf("port.2.1");
  RowSelection inner(store_);
  AddExact(2);
  selection_.Activate(Lookup::kCandidates);
  inner.Activate(Lookup::kCandidates);
  delete &store_;
  EXPECT_EQ(selection_.EntryOf(&request_, row), nullptr);
  EXPECT_THAT(selection_.AllMatches(), IsEmpty());
}

}  // namespace
