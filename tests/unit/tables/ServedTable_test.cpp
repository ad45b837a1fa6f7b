// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <algorithm>
#include <random>
#include <stdexcept>

#include "support/EventfulValue.h"
#include "support/ServedTableTest.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class ServedTable : public ServedTableTest {};

TEST_F(ServedTable, IsWalkedInTheOrderOfItsIndexes) {
  const std::pair<int, unsigned int> slots[] = {{10, 1}, {2, 1},  {2, 10},
                                                {1, 99}, {2, 2},  {100, 0},
                                                {9, 7},  {10, 0}, {0, 5}};
  for (const auto& [unit, slot] : slots) AddSlot(unit, slot, 7);
  EXPECT_THAT(Walk(), ElementsAre("3.0.5 = 7", "3.1.99 = 7", "3.2.1 = 7",
                                  "3.2.2 = 7", "3.2.10 = 7", "3.9.7 = 7",
                                  "3.10.0 = 7", "3.10.1 = 7", "3.100.0 = 7"));
}

TEST_F(ServedTable, IsWalkedColumnByColumn) {
  auto* const wide = BuildTable(TestOid({3}), "wideTable");
  BuildStore("wideStore", Values(Int(0), Int(0)), 4, wide);
  for (const int unit : {10, 2}) {
    wide->AddRow(Values(Int(unit), Index(Int(unit)), Index(Int(1)), Int(5)));
  }
  EXPECT_THAT(WalkFrom(TestOid({3})), ElementsAre("3.2.1 = 2", "3.10.1 = 10",
                                                  "4.2.1 = 5", "4.10.1 = 5"));
}

TEST_F(ServedTable, AnswersGetNextFromAnywhere) {
  for (const int unit : {1, 5}) AddSlot(unit, 2);
  const std::pair<Oid, std::string> steps[] = {
      {TestOid({2}), "3.1.2"},
      {TestOid({2, 0}), "3.1.2"},
      {TestOid({2, 1}), "3.1.2"},
      {TestOid({2, 1, 1, 9}), "3.1.2"},
      {TestOid({2, 1, 3}), "3.1.2"},
      {TestOid({2, 1, 3, 1}), "3.1.2"},
      {CellOid(3, 1, 1), "3.1.2"},
      {CellOid(3, 1, 2), "3.5.2"},
      {CellOid(3, 4, 4294967295), "3.5.2"},
      {TestOid({2, 1, 3, 1, 2, 0}), "3.5.2"}};
  for (const auto& [from, to] : steps) {
    CellRequest next(from);
    Serve(next, MODE_GETNEXT);
    EXPECT_EQ(InstanceOf(next.Name()), to) << testing::PrintToString(from);
    EXPECT_EQ(next.Type(), ASN_INTEGER);
  }
  for (const Oid& last :
       {CellOid(3, 5, 2), TestOid({2, 1, 4}), TestOid({2, 2})}) {
    CellRequest next(last);
    Serve(next, MODE_GETNEXT);
    EXPECT_EQ(next.Type(), ASN_NULL) << testing::PrintToString(last);
  }
}

TEST_F(ServedTable, AnswersGetWithTheCellOrTheReasonWhyNot) {
  AddSlot(1, 2, 10);
  EXPECT_EQ(TypeOfGet(CellOid(3, 1, 2)), ASN_INTEGER);
  for (const Oid& absent :
       {CellOid(3, 2, 1), CellOid(3, 9, 9), TestOid({2, 1, 3, 1}),
        TestOid({2, 1, 3, 1, 2, 3}), TestOid({2, 1, 3})}) {
    EXPECT_EQ(TypeOfGet(absent), SNMP_NOSUCHINSTANCE)
        << testing::PrintToString(absent);
  }
  for (const Oid& absent : {CellOid(2, 1, 2), CellOid(4, 1, 2), TestOid({2}),
                            TestOid({2, 1}), TestOid({2, 2, 3, 1, 2})}) {
    EXPECT_EQ(TypeOfGet(absent), SNMP_NOSUCHOBJECT)
        << testing::PrintToString(absent);
  }
}

TEST_F(ServedTable, IsEmptyWithoutRowsOrStore) {
  EXPECT_THAT(Walk(), IsEmpty());
  EXPECT_EQ(TypeOfGet(CellOid(3, 1, 2)), SNMP_NOSUCHINSTANCE);
  AddSlot(1, 2);
  delete store_;
  EXPECT_THAT(Walk(), IsEmpty());
  EXPECT_EQ(TypeOfGet(CellOid(3, 1, 2)), SNMP_NOSUCHINSTANCE);
  CellRequest set(CellOid(3, 1, 2));
  set.SetInteger(5);
  Serve(set, MODE_SET_RESERVE1);
  EXPECT_EQ(set.Status(), SNMP_ERR_NOCREATION);
}

TEST_F(ServedTable, ShowsRowsAsTheyComeAndGo) {
  AddSlot(5, 1, 50);
  AddSlot(1, 1, 10);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 10", "3.5.1 = 50"));
  AddSlot(3, 1, 30);
  AddSlot(1, 1, 11);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 11", "3.3.1 = 30", "3.5.1 = 50"));
  store_->RemoveRow("port.3.1");
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 11", "3.5.1 = 50"));
}

TEST_F(ServedTable, FollowsAnIndexThatTheApplicationChanges) {
  int unit = 7;
  store_->AddRow(Values(Index(NetSNMPIntNodeData(&unit, eNodeAccessReadOnly)),
                        Index(Unsigned(1)), Int(70)));
  AddSlot(5, 1, 50);
  EXPECT_THAT(Walk(), ElementsAre("3.5.1 = 50", "3.7.1 = 70"));
  unit = 2;
  EXPECT_THAT(Walk(), ElementsAre("3.2.1 = 70", "3.5.1 = 50"));
  EXPECT_EQ(TypeOfGet(CellOid(3, 2, 1)), ASN_INTEGER);
  EXPECT_EQ(TypeOfGet(CellOid(3, 7, 1)), SNMP_NOSUCHINSTANCE);
  store_->GetRow("port.5.1")->at(0)->NodeDataValue(1, false);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 50", "3.2.1 = 70"));
  ASSERT_TRUE(store_->RemoveRow("port.5.1"));
  EXPECT_THAT(Walk(), ElementsAre("3.2.1 = 70"));
}

TEST_F(ServedTable, FollowsARowThatWasChangedDuringAWalkOfTheApplication) {
  for (const int unit : {1, 2, 3}) AddSlot(unit, 1, unit);
  Walk();
  StoredRow* row = store_->GetFirstRow();
  row = store_->GetNextRow();
  row->at(0)->NodeDataValue(9, false);
  store_->rows_.at("port.3.1")->at(2)->NodeDataValue(33, false);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 1", "3.3.1 = 33", "3.9.1 = 2"));
}

TEST_F(ServedTable, ShowsTheFirstOfTwoRowsWithTheSameIndexes) {
  auto* const table = BuildTable(TestOid({3}), "otherTable");
  auto* const store = BuildStore("other", Values(Int(0)), 2, table);
  store->AddRow(Values(Index(Unsigned(4294967295)), Int(2)));
  store->AddRow(Values(Index(Int(-1)), Int(1)));
  CellRequest next(TestOid({3}));
  next.Serve(LocalAgent::RegistrationAt(TestOid({3})), MODE_GETNEXT);
  EXPECT_EQ(next.Integer(), 1);
  ASSERT_TRUE(store->RemoveRow("port.-1"));
  CellRequest again(TestOid({3}));
  again.Serve(LocalAgent::RegistrationAt(TestOid({3})), MODE_GETNEXT);
  EXPECT_EQ(again.Integer(), 2);
}

TEST_F(ServedTable, IsCompleteAndInOrderWhateverItsRows) {
  std::mt19937 random(1);
  std::vector<int> variables(20);
  std::vector<std::pair<unsigned long, unsigned long>> expected;
  for (std::size_t count = 0; count < 200; ++count) {
    const int unit = static_cast<int>(random() % 30);
    const unsigned int slot = random() % 300;
    const bool isVariable = count % 10 == 0;
    if (isVariable) {
      int& variable = variables[count / 10] = unit;
      store_->AddRow(
          Values(Index(NetSNMPIntNodeData(&variable, eNodeAccessReadOnly)),
                 Index(Unsigned(slot)), Int(0)));
    } else {
      AddSlot(unit, slot);
    }
    if (count % 7 == 0) {
      store_->GetRow("port." + std::to_string(unit) + "." +
                     std::to_string(slot));
    }
    expected.emplace_back(unit, slot);
  }
  std::sort(expected.begin(), expected.end());
  expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
  std::vector<std::string> rows;
  for (const auto& [unit, slot] : expected) {
    rows.push_back(std::to_string(unit) + "." + std::to_string(slot));
  }
  EXPECT_THAT(WalkedRows(), ElementsAreArray(rows));
}

TEST_F(ServedTable, PassesOverTheColumnsThatShortRowsLack) {
  AddSlot(1, 1, 10);
  store_->AddRow(Values(Index(Int(2)), Index(Unsigned(1))));
  AddSlot(3, 1, 30);
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 10", "3.3.1 = 30"));
  EXPECT_EQ(TypeOfGet(CellOid(3, 2, 1)), SNMP_NOSUCHINSTANCE);
}

TEST_F(ServedTable, HasNoColumnForANullElement) {
  auto* const wide = BuildTable(TestOid({3}), "wideTable");
  BuildStore("wideStore", Values(Int(0)), 3, wide);
  const Values values(Index(Int(1)), Int(2), Int(3));
  std::vector<NetSNMPNodeData*> row = values;
  EXPECT_TRUE(wide->AddRow(row));
  EXPECT_THAT(WalkFrom(TestOid({3})), ElementsAre("2.1 = 2", "3.1 = 3"));
  row[1] = nullptr;
  EXPECT_TRUE(wide->AddRow(row));
  EXPECT_THAT(WalkFrom(TestOid({3})), ElementsAre("2.1 = 3"));
}

TEST_F(ServedTable, AnswersSeveralRequestsAtOnce) {
  AddSlot(1, 1, 10);
  AddSlot(2, 1, 20);
  CellRequest second(CellOid(3, 2, 1));
  CellRequest absent(CellOid(3, 9, 9));
  CellRequest first(CellOid(3, 1, 1));
  second.Append(absent);
  absent.Append(first);
  EXPECT_EQ(Serve(second, MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(second.Integer(), 20);
  EXPECT_EQ(absent.Type(), SNMP_NOSUCHINSTANCE);
  EXPECT_EQ(first.Integer(), 10);

  CellRequest start(kPortTableOid);
  CellRequest middle(CellOid(3, 1, 1));
  CellRequest end(CellOid(3, 2, 1));
  start.Append(middle);
  middle.Append(end);
  EXPECT_EQ(Serve(start, MODE_GETNEXT), SNMP_ERR_NOERROR);
  EXPECT_EQ(start.Integer(), 10);
  EXPECT_EQ(middle.Integer(), 20);
  EXPECT_EQ(end.Type(), ASN_NULL);
}

// A row given to the application makes the walk the iterator's.
TEST_F(ServedTable, MayLoseARowThatTheSameRequestAddresses) {
  for (const bool givenOut : {false, true}) {
    for (const int lost : {1, 2, 3}) {
      const auto loseRow = [&](const NetSNMPNodeData&) {
        store_->RemoveRow("port." + std::to_string(lost) + ".1");
      };
      AddSlot(1, 1, 10);
      AddSlot(3, 1, 30);
      store_->AddRow(Values(Index(Int(2)), Index(Unsigned(1)),
                            EventfulValue(20, loseRow)));
      if (givenOut) store_->GetRow("port.3.1");
      CellRequest reader(CellOid(3, 2, 1));
      CellRequest first(CellOid(3, 1, 1));
      CellRequest third(CellOid(3, 3, 1));
      reader.Append(first);
      first.Append(third);
      Serve(reader, MODE_GET);
      EXPECT_EQ(first.Type(), lost == 1 ? SNMP_NOSUCHINSTANCE : ASN_INTEGER);
      EXPECT_EQ(third.Type(), lost == 3 ? SNMP_NOSUCHINSTANCE : ASN_INTEGER);
      EXPECT_EQ(store_->rows_.size(), 2U);
    }
  }
}

TEST_F(ServedTable, MayLoseARowInARequestWithinARequest) {
  AddSlot(1, 1, 10);
  AddSlot(3, 1, 30);
  const auto loseFirst = [&](const NetSNMPNodeData&) {
    store_->RemoveRow("port.1.1");
  };
  const auto readFourth = [&](const NetSNMPNodeData&) {
    CellRequest fourth(CellOid(3, 4, 1));
    Serve(fourth, MODE_GET);
  };
  store_->AddRow(
      Values(Index(Int(4)), Index(Unsigned(1)), EventfulValue(40, loseFirst)));
  store_->AddRow(
      Values(Index(Int(2)), Index(Unsigned(1)), EventfulValue(20, readFourth)));
  CellRequest second(CellOid(3, 2, 1));
  CellRequest first(CellOid(3, 1, 1));
  CellRequest third(CellOid(3, 3, 1));
  second.Append(first);
  first.Append(third);
  Serve(second, MODE_GET);
  EXPECT_EQ(second.Integer(), 20);
  EXPECT_EQ(first.Type(), SNMP_NOSUCHINSTANCE);
  EXPECT_EQ(third.Integer(), 30);
}

TEST_F(ServedTable, AnswersGenErrWhenAValueThrows) {
  store_->AddRow(Values(Index(Int(1)), Index(Unsigned(1)),
                        EventfulValue(10, [](const NetSNMPNodeData&) {
                          throw std::runtime_error("sensor lost");
                        })));
  CellRequest get(CellOid(3, 1, 1));
  EXPECT_EQ(Serve(get, MODE_GET), SNMP_ERR_GENERR);
  EXPECT_EQ(get.Status(), SNMP_ERR_GENERR);
  CellRequest next(kPortTableOid);
  EXPECT_EQ(Serve(next, MODE_GETNEXT), SNMP_ERR_GENERR);
  EXPECT_EQ(next.Status(), SNMP_ERR_GENERR);
}

TEST_F(ServedTable, WithoutAnIntegerIndexShowsNothing) {
  auto* const table = BuildTable(TestOid({3}), "texts");
  auto* const store = BuildStore("textStore", Values(Text("")), 2, table);
  EXPECT_FALSE(store->AddRow(Values(Index(Text("a")), Int(1))));
  EXPECT_TRUE(table->iteratorRegistered_);
  CellRequest get(TestOid({3, 1, 2, 1}));
  get.Serve(table->handlerRegistration_, MODE_GET);
  EXPECT_EQ(get.Type(), SNMP_NOSUCHINSTANCE);
  CellRequest next(TestOid({3}));
  next.Serve(table->handlerRegistration_, MODE_GETNEXT);
  EXPECT_EQ(next.Type(), ASN_NULL);
}

}  // namespace
