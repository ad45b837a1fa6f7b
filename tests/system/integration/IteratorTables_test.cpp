// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "support/Session.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::Session;
using support::TableOid;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A table with the indexes unit and slot and the columns 3 and 4.
class ATable : public testing::Test {
 protected:
  ATable() { session_.Connect(); }

  // A row whose cells tell where they are.
  static void AddRow(NetSNMPTableEntryNode* store, int unit, int slot) {
    const NetSNMPAgentGuard guard;
    EXPECT_TRUE(store->AddRow(Values(Index(Int(unit)), Index(Int(slot)),
                                     Int(100 * unit + slot), Text("fan"))));
  }

  static std::string NumberAt(unsigned long table, int unit, int slot) {
    return CellOid(table, 3,
                   std::to_string(unit) + "." + std::to_string(slot)) +
           " = INTEGER: " + std::to_string(100 * unit + slot);
  }

  static std::string TextAt(unsigned long table, int unit, int slot) {
    return CellOid(table, 4,
                   std::to_string(unit) + "." + std::to_string(slot)) +
           " = STRING: \"fan\"";
  }

  std::vector<std::string> Walked(unsigned long table) const {
    return session_.Manager().Objects(TableOid(table));
  }

  // The same by GETBULK.
  std::vector<std::string> BulkWalked(unsigned long table) const {
    std::vector<std::string> lines =
        session_.Manager().BulkWalk(TableOid(table)).Lines();
    // The end is told in a line of its own if nothing follows.
    if (lines.back().find(" = No ") != std::string::npos) lines.pop_back();
    return lines;
  }

  Session session_;
  NetSNMPTableEntryNode* const store_ =
      AddStore(1, "fans", 2, 4, AddTable(1, "fanTable"));
};

TEST_F(ATable, IsWalkedInTheOrderOfItsIndexes) {
  const std::pair<int, int> rows[] = {{10, 1}, {2, 10}, {2, 9}, {1, 20}};
  for (const auto& [unit, slot] : rows) AddRow(store_, unit, slot);
  EXPECT_THAT(Walked(1), ElementsAre(NumberAt(1, 1, 20), NumberAt(1, 2, 9),
                                     NumberAt(1, 2, 10), NumberAt(1, 10, 1),
                                     TextAt(1, 1, 20), TextAt(1, 2, 9),
                                     TextAt(1, 2, 10), TextAt(1, 10, 1)));
}

TEST_F(ATable, IsWalkedByGetBulkOverTheEndsOfItsColumns) {
  for (const int unit : {11, 7, 3}) {
    for (const int slot : {1, 2, 10}) AddRow(store_, unit, slot);
  }
  AddRow(AddStore(2, "next", 2, 4, AddTable(2, "nextTable")), 1, 1);
  const std::vector<std::string> walked = Walked(1);
  EXPECT_EQ(walked.size(), 18U);
  EXPECT_THAT(BulkWalked(1), ElementsAreArray(walked));
}

TEST_F(ATable, HasNoInstancesOfRowsThatAreAbsent) {
  AddRow(store_, 2, 2);
  AddRow(store_, 4, 4);
  for (const char* instance : {"1.1", "2.1", "2.3", "4.4.4", "2", "5.5"}) {
    EXPECT_THAT(session_.Manager().Get(CellOid(1, 3, instance)).out,
                HasSubstr("No Such Instance"))
        << instance;
  }
  for (const unsigned int column : {1U, 2U, 5U}) {
    EXPECT_THAT(session_.Manager().Get(CellOid(1, column, "2.2")).out,
                HasSubstr("No Such Object"));
  }
  EXPECT_THAT(session_.Manager().GetNext(CellOid(1, 3, "2.3")).out,
              HasSubstr(NumberAt(1, 4, 4)));
  EXPECT_THAT(session_.Manager().GetNext(CellOid(1, 3, "4.4")).out,
              HasSubstr(TextAt(1, 2, 2)));
  EXPECT_THAT(session_.Manager().GetNext(CellOid(1, 1, "9")).out,
              HasSubstr(NumberAt(1, 2, 2)));
}

TEST_F(ATable, ShowsRowsAddedReplacedAndRemovedBetweenRequests) {
  EXPECT_THAT(Walked(1), IsEmpty());
  AddRow(store_, 2, 1);
  AddRow(store_, 1, 1);
  EXPECT_THAT(Walked(1), ElementsAre(NumberAt(1, 1, 1), NumberAt(1, 2, 1),
                                     TextAt(1, 1, 1), TextAt(1, 2, 1)));
  {
    const NetSNMPAgentGuard guard;
    store_->AddRow(
        Values(Index(Int(2)), Index(Int(1)), Int(5), Text("replaced")));
    store_->RemoveRow("fans.1.1");
  }
  EXPECT_THAT(Walked(1),
              ElementsAre(CellOid(1, 3, "2.1") + " = INTEGER: 5",
                          CellOid(1, 4, "2.1") + " = STRING: \"replaced\""));
  {
    const NetSNMPAgentGuard guard;
    store_->RemoveRow("fans.2.1");
  }
  EXPECT_THAT(Walked(1), IsEmpty());
}

TEST_F(ATable, HasGapsWhereItsRowsAreShort) {
  AddRow(store_, 1, 1);
  {
    const NetSNMPAgentGuard guard;
    store_->AddRow(Values(Index(Int(2)), Index(Int(1)), Int(201)));
  }
  AddRow(store_, 3, 1);
  const std::vector<std::string> expected = {
      NumberAt(1, 1, 1), NumberAt(1, 2, 1), NumberAt(1, 3, 1), TextAt(1, 1, 1),
      TextAt(1, 3, 1)};
  EXPECT_THAT(Walked(1), ElementsAreArray(expected));
  EXPECT_THAT(BulkWalked(1), ElementsAreArray(expected));
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 4, "2.1")).out,
              HasSubstr("No Such Instance"));
}

TEST_F(ATable, FollowsAnIndexThatTheApplicationChanges) {
  int unit = 5;
  {
    const NetSNMPAgentGuard guard;
    store_->AddRow(Values(Index(NetSNMPIntNodeData(&unit, eNodeAccessReadOnly)),
                          Index(Int(1)), Int(77)));
  }
  AddRow(store_, 3, 1);
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 3, "5.1")).out,
              HasSubstr("INTEGER: 77"));
  {
    const NetSNMPAgentGuard guard;
    unit = 2;
  }
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 3, "5.1")).out,
              HasSubstr("No Such Instance"));
  EXPECT_THAT(Walked(1), ElementsAre(CellOid(1, 3, "2.1") + " = INTEGER: 77",
                                     NumberAt(1, 3, 1), TextAt(1, 3, 1)));
}

TEST_F(ATable, IsWalkedWholeWhileAnotherManagerWalksAnother) {
  auto* const other = AddStore(2, "pumps", 2, 4, AddTable(2, "pumpTable"));
  for (int number = 1; number <= 30; ++number) {
    AddRow(store_, number, 1);
    AddRow(other, 31 - number, 2);
  }
  const auto walk = [this](unsigned long table) {
    for (int round = 0; round < 5; ++round) {
      const std::vector<std::string> lines =
          round % 2 == 0 ? Walked(table) : BulkWalked(table);
      ASSERT_EQ(lines.size(), 60U);
      for (int number = 1; number <= 30; ++number) {
        const int slot = static_cast<int>(table);
        EXPECT_EQ(lines[number - 1], NumberAt(table, number, slot));
        EXPECT_EQ(lines[number + 29], TextAt(table, number, slot));
      }
    }
  };
  std::thread second([&] { walk(2); });
  walk(1);
  second.join();
}

TEST_F(ATable, SharesItsRowsWithAnotherTable) {
  AddTable(2, "twins")->TableEntryNode(store_);
  AddRow(store_, 1, 1);
  EXPECT_THAT(Walked(1), ElementsAre(NumberAt(1, 1, 1), TextAt(1, 1, 1)));
  EXPECT_THAT(Walked(2), ElementsAre(NumberAt(2, 1, 1), TextAt(2, 1, 1)));
  delete store_;
  EXPECT_THAT(session_.Manager().Get(CellOid(1, 3, "1.1")).out,
              HasSubstr("No Such Instance"));
  EXPECT_THAT(Walked(2), IsEmpty());
}

TEST_F(ATable, IsUnseenUntilItHasAStore) {
  auto* const table = AddTable(2, "pumpTable");
  EXPECT_TRUE(table->registered_);
  EXPECT_THAT(session_.Manager().Get(CellOid(2, 3, "1.1")).out,
              HasSubstr("No Such Object"));
  AddRow(AddStore(2, "pumps", 2, 4, table), 1, 1);
  EXPECT_THAT(session_.Manager().Get(CellOid(2, 3, "1.1")).out,
              HasSubstr("INTEGER: 101"));
}

}  // namespace
