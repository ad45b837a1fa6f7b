// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
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

// The application's variables of one row.
struct Variables {
  int number = -42;
  unsigned int count = 4000000000;
  std::string text = "fan tray";
  char characters[32] = "rev B";
  bool flag = true;
  unsigned char bytes[2] = {0xde, 0xad};

  bool AreInitial() const {
    return number == -42 && count == 4000000000 && text == "fan tray" &&
           std::strcmp(characters, "rev B") == 0 && flag && bytes[0] == 0xde;
  }
  // A SET of a byte buffer succeeds and changes nothing.
  bool AreWritten() const {
    return number == 7 && count == 8 && text == "pump" &&
           std::strcmp(characters, "rev C") == 0 && !flag && bytes[0] == 0xde;
  }
};

// What a manager sees of a column, and what it writes there.
struct Column {
  unsigned int number;
  std::string initial;
  std::string typeLetter;
  std::string newValue;
  std::string written;
};

const Column kColumns[] = {
    {2, "INTEGER: -42", "i", "7", "INTEGER: 7"},
    {3, "Gauge32: 4000000000", "u", "8", "Gauge32: 8"},
    {4, "STRING: \"fan tray\"", "s", "pump", "STRING: \"pump\""},
    {5, "STRING: \"rev B\"", "s", "rev C", "STRING: \"rev C\""},
    {6, "INTEGER: 1", "i", "2", "INTEGER: 2"},
    {7, "Hex-STRING: DE AD ", "x", "0102", "Hex-STRING: DE AD "}};

// A row for each access mode, numbered as the mode is; in each a column for
// each type of value.
class TableCells : public testing::TestWithParam<bool> {
 protected:
  TableCells() {
    session_.Connect();
    auto* const store = AddStore(1, "cells", 1, 7, AddTable(1, "cellTable"));
    for (const eNodeAccessMode mode :
         {eNodeAccessDefault, eNodeAccessReadOnly, eNodeAccessReadWrite,
          eNodeAccessWriteOnly}) {
      const NetSNMPAgentGuard guard;
      store->AddRow(Row(variables_[mode], mode, HoldTheirValues()));
    }
  }

  static bool HoldTheirValues() { return GetParam(); }

  static Values Row(Variables& v, eNodeAccessMode mode, bool local) {
    return Values(Index(Int(mode)), NetSNMPIntNodeData(&v.number, mode, local),
                  NetSNMPUnsignedIntNodeData(&v.count, mode, local),
                  NetSNMPStringNodeData(&v.text, mode, local),
                  NetSNMPCharNodeData(v.characters, mode, local),
                  NetSNMPBoolNodeData(&v.flag, mode, local),
                  NetSNMPByteNodeData(v.bytes, sizeof v.bytes, mode, local));
  }

  static std::string Oid(const Column& column, int mode) {
    return CellOid(1, column.number, std::to_string(mode));
  }

  CommandResult Set(const Column& column, int mode) {
    return session_.Set(
        {Oid(column, mode), column.typeLetter, column.newValue});
  }

  void ExpectShown(const Column& column, int mode, const std::string& value) {
    const std::string oid = Oid(column, mode);
    EXPECT_THAT(session_.Manager().Get(oid).out,
                HasSubstr(oid + " = " + value));
  }

  Variables variables_[4];
  Session session_;
};

TEST_P(TableCells, AreReadInEveryAccessMode) {
  for (int mode = 0; mode < 4; ++mode) {
    for (const Column& column : kColumns) {
      ExpectShown(column, mode, column.initial);
    }
  }
}

TEST_P(TableCells, AreReadByGetNextInEveryAccessMode) {
  const std::vector<std::string> walked =
      session_.Manager().Objects(support::TableOid(1));
  ASSERT_EQ(walked.size(), 24U);
  auto line = walked.begin();
  for (const Column& column : kColumns) {
    for (int mode = 0; mode < 4; ++mode, ++line) {
      EXPECT_EQ(*line, Oid(column, mode) + " = " + column.initial);
    }
  }
}

TEST_P(TableCells, RefuseASetIfTheyAreNotWritable) {
  for (const int mode : {eNodeAccessDefault, eNodeAccessReadOnly}) {
    for (const Column& column : kColumns) {
      const CommandResult result = Set(column, mode);
      EXPECT_FALSE(result.Succeeded()) << result;
      EXPECT_THAT(result.error, HasSubstr("notWritable"));
      ExpectShown(column, mode, column.initial);
    }
    EXPECT_TRUE(variables_[mode].AreInitial());
  }
}

// For a cell with a copy only a copy of the row is written.
TEST_P(TableCells, WriteTheApplicationsVariablesIfTheyAreWritable) {
  for (const int mode : {eNodeAccessReadWrite, eNodeAccessWriteOnly}) {
    for (const Column& column : kColumns) {
      const CommandResult result = Set(column, mode);
      EXPECT_TRUE(result.Succeeded()) << result;
      ExpectShown(column, mode,
                  HoldTheirValues() ? column.initial : column.written);
    }
    const NetSNMPAgentGuard guard;
    EXPECT_TRUE(HoldTheirValues() ? variables_[mode].AreInitial()
                                  : variables_[mode].AreWritten());
  }
}

INSTANTIATE_TEST_SUITE_P(All, TableCells, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& info) {
                           return info.param ? "HoldingTheirValues"
                                             : "OverTheApplicationsVariables";
                         });

}  // namespace
