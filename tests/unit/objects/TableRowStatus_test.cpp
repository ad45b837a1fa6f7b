// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// RowStatus and StorageType after RFC 2579: every state and action against a
// model, and what managers see of rows that they make.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using snmp::RowStatus;
using snmp::StorageType;

struct User {
  int quota = 10;
  int shell = 20;
  int plain = 30;
  StorageType storage = StorageType::Volatile;
};

// Columns: 2 and 3 are required, 4 has a default, 5 is the StorageType, 6 the
// RowStatus.
struct Users : Device {
  Users() {
    table.Column(2, &User::quota, snmp::ReadCreate().Range(0, 99).Required())
        .Column(3, &User::shell, snmp::ReadCreate().Required())
        .Column(4, &User::plain, snmp::ReadCreate())
        .StorageType(5, &User::storage)
        .RowStatus(6)
        .Changed([this](const auto& change) {
          told.push_back(std::to_string(static_cast<int>(change.statusBefore)) +
                         " to " +
                         std::to_string(static_cast<int>(change.statusAfter)));
        });
    Connect();
  }

  static std::string Cell(int column, int row) {
    return "5.1." + std::to_string(column) + "." + std::to_string(row);
  }
  static Assignment Status(RowStatus action, int row = 1) {
    return {Cell(6, row), Int(static_cast<int>(action))};
  }
  static Assignment Value(int column, int value, int row = 1) {
    return {Cell(column, row), Int(value)};
  }

  snmp::Module module{agent, kBase};
  snmp::Table<int, User> table{module, "5"};
  std::vector<std::string> told;
};

// ---- The table of RFC 2579, for one row.

struct Row {
  RowStatus status = RowStatus::None;
  bool has[2] = {false, false};  // the required columns
};

enum class Before { None, NotReady, HalfReady, NotInService, Active };

struct Case {
  Before before;
  int action;        // 0 for none, or what is written to the status
  unsigned columns;  // a bit each for columns 2, 3 and 4
  bool statusFirst;
  bool frozen;
  StorageType storage;
};

Row Prepared(Before before) {
  switch (before) {
    case Before::None:
      return {};
    case Before::NotReady:
      return {RowStatus::NotReady, {false, false}};
    case Before::HalfReady:
      return {RowStatus::NotReady, {true, false}};
    case Before::NotInService:
      return {RowStatus::NotInService, {true, true}};
    default:
      return {RowStatus::Active, {true, true}};
  }
}

// What RFC 2579 says comes of it: the error, and the row.
std::string Model(const Case& c, Row& row) {
  const bool exists = row.status != RowStatus::None;
  const bool isFixed = exists && c.storage == StorageType::ReadOnly;
  if (c.action == 3 || c.action == 7) {  // Nobody may write these.
    return isFixed && c.columns != 0 && !c.statusFirst ? "notWritable"
                                                       : "wrongValue";
  }
  if (isFixed) return "notWritable";
  Row after = row;
  if (c.columns & 1U) after.has[0] = true;
  if (c.columns & 2U) after.has[1] = true;
  const bool complete = after.has[0] && after.has[1];
  switch (c.action) {
    case 0:
      if (!exists) return "inconsistentName";
      if (row.status == RowStatus::Active && c.frozen) {
        return "inconsistentValue";
      }
      if (row.status == RowStatus::NotReady && complete) {
        after.status = RowStatus::NotInService;
      }
      break;
    case 1:
    case 2:
      if (!exists || !complete) return "inconsistentValue";
      if (c.action == 1 && row.status == RowStatus::Active && c.columns != 0 &&
          c.frozen) {
        return "inconsistentValue";
      }
      after.status = static_cast<RowStatus>(c.action);
      break;
    case 4:
      if (exists || !complete) return "inconsistentValue";
      after.status = RowStatus::Active;
      break;
    case 5:
      if (exists) return "inconsistentValue";
      after.status = complete ? RowStatus::NotInService : RowStatus::NotReady;
      break;
    case 6:
      if (exists && c.storage == StorageType::Permanent) {
        return "inconsistentValue";
      }
      after = {};
      break;
  }
  row = after;
  return "noError";
}

Assignments Pdu(const Case& c, int row) {
  Assignments pdu;
  if (c.action != 0 && c.statusFirst) {
    pdu.push_back(Users::Status(static_cast<RowStatus>(c.action), row));
  }
  for (int column = 2; column <= 4; ++column) {
    if (c.columns & (1U << (column - 2))) {
      pdu.push_back(Users::Value(column, column, row));
    }
  }
  if (c.action != 0 && !c.statusFirst) {
    pdu.push_back(Users::Status(static_cast<RowStatus>(c.action), row));
  }
  return pdu;
}

std::string WithoutPlace(const std::string& text) {
  return text.substr(0, text.find(' '));
}

void Prepare(Users& users, const Case& c, int row) {
  const auto set = [&](const Assignments& pdu) {
    ASSERT_EQ(users.Set(pdu), "noError");
  };
  switch (c.before) {
    case Before::None:
      return;
    case Before::NotReady:
      set({Users::Status(RowStatus::CreateAndWait, row)});
      break;
    case Before::HalfReady:
      set({Users::Status(RowStatus::CreateAndWait, row),
           Users::Value(2, 1, row)});
      break;
    case Before::NotInService:
      set({Users::Status(RowStatus::CreateAndWait, row),
           Users::Value(2, 1, row), Users::Value(3, 1, row)});
      break;
    case Before::Active:
      set({Users::Status(RowStatus::CreateAndGo, row), Users::Value(2, 1, row),
           Users::Value(3, 1, row)});
      break;
  }
  users.table.Change(row, [&](User& user) { user.storage = c.storage; });
}

// What managers see of the row.
std::string Expected(const Row& row) {
  if (row.status == RowStatus::None) {
    return "noSuchInstance, noSuchInstance, noSuchInstance";
  }
  const auto seen = [&](bool has) {
    return has ? std::string("INTEGER") : std::string("noSuchInstance");
  };
  return "INTEGER " + std::to_string(static_cast<int>(row.status)) + ", " +
         seen(row.has[0]) + ", " + seen(row.has[1]);
}

std::string Seen(Users& users, int row) {
  const auto kind = [&](int column) {
    const std::string text = users.Get(Users::Cell(column, row));
    return text.substr(0, text.find(' '));
  };
  return users.Get(Users::Cell(6, row)) + ", " + kind(2) + ", " + kind(3);
}

class EveryAction : public testing::TestWithParam<bool> {};

TEST_P(EveryAction, InEveryStateDoesWhatTheTextualConventionSays) {
  Users users;
  const bool frozen = GetParam();
  if (frozen) users.table.FreezeActiveRows();
  int key = 0;
  for (const auto before : {Before::None, Before::NotReady, Before::HalfReady,
                            Before::NotInService, Before::Active}) {
    for (const auto storage : {StorageType::Volatile, StorageType::Permanent,
                               StorageType::ReadOnly}) {
      for (int action = 0; action <= 7; ++action) {
        for (unsigned columns = action == 0 ? 1 : 0; columns < 8; ++columns) {
          for (const bool statusFirst : {true, false}) {
            if (before == Before::None && storage != StorageType::Volatile) {
              continue;
            }
            const Case c{before, action, columns, statusFirst, frozen, storage};
            SCOPED_TRACE(testing::Message()
                         << "before " << static_cast<int>(before) << " action "
                         << action << " columns " << columns << " storage "
                         << static_cast<int>(storage) << " status first "
                         << statusFirst);
            ++key;
            ASSERT_NO_FATAL_FAILURE(Prepare(users, c, key));
            Row row = Prepared(before);
            ASSERT_EQ(Seen(users, key), Expected(row));
            users.told.clear();
            const std::string expected = Model(c, row);
            ASSERT_EQ(WithoutPlace(users.Set(Pdu(c, key))), expected);
            ASSERT_EQ(Seen(users, key), Expected(row));
            const bool isNothing =
                before == Before::None && row.status == RowStatus::None;
            ASSERT_EQ(users.told.size(),
                      expected == "noError" && !isNothing ? 1U : 0U);
            users.table.Erase(key);
          }
        }
      }
    }
  }
}
INSTANTIATE_TEST_SUITE_P(OfRowStatus, EveryAction, testing::Bool(),
                         [](const auto& frozen) {
                           return frozen.param ? "WhereActiveRowsAreFrozen"
                                               : "WhereActiveRowsMayChange";
                         });

// ---- What the model does not say.

TEST(ARowThatAManagerMakes, HasTheDefaultsOfWhatItDoesNotWrite) {
  Users users;
  ASSERT_EQ(users.Set({Users::Status(RowStatus::CreateAndGo),
                       Users::Value(2, 5), Users::Value(3, 6)}),
            "noError");
  EXPECT_EQ(users.Walk("5"),
            "5.1.2.1 INTEGER 5, 5.1.3.1 INTEGER 6, 5.1.4.1 INTEGER 30, "
            "5.1.5.1 INTEGER 2, 5.1.6.1 INTEGER 1");
  EXPECT_EQ(users.table.Status(1), RowStatus::Active);
  EXPECT_EQ(users.table.Find(1)->quota, 5);
}

TEST(ARowThatIsNotReady, IsWalkedWithoutTheCellsThatItLacks) {
  Users users;
  ASSERT_EQ(
      users.Set({Users::Status(RowStatus::CreateAndWait), Users::Value(3, 6)}),
      "noError");
  EXPECT_EQ(users.Walk("5"),
            "5.1.3.1 INTEGER 6, 5.1.4.1 INTEGER 30, 5.1.5.1 INTEGER 2, "
            "5.1.6.1 INTEGER 3");
}

TEST(ARow, IsCreatedOnlyIfEveryOtherVarbindIsRight) {
  Users users;
  EXPECT_EQ(users.Set({Users::Status(RowStatus::CreateAndGo),
                       Users::Value(2, 100), Users::Value(3, 6)}),
            "wrongValue 2");
  EXPECT_EQ(users.Set({Users::Value(2, 1),
                       Users::Value(3, 1),
                       Users::Status(RowStatus::CreateAndGo),
                       {"5.1.7.1", Int(1)}}),
            "notWritable 4");
  EXPECT_EQ(users.Walk("5"), "");
  EXPECT_TRUE(users.told.empty());
}

TEST(AnInconsistentAction, IsBlamedOnItsVarbind) {
  Users users;
  EXPECT_EQ(
      users.Set({Users::Value(2, 1), Users::Status(RowStatus::CreateAndGo)}),
      "inconsistentValue 2");
  EXPECT_EQ(users.Set({Users::Status(RowStatus::CreateAndWait),
                       Users::Status(RowStatus::Destroy)}),
            "inconsistentValue 2");
}

TEST(AStatus, IsAnInteger) {
  Users users;
  EXPECT_EQ(users.Set({{Users::Cell(6, 1), Gauge(4)}}), "wrongType 1");
  EXPECT_EQ(users.Set({{Users::Cell(6, 1), Int(0)}}), "wrongValue 1");
  EXPECT_EQ(users.Set({{Users::Cell(6, 1), Int(-1)}}), "wrongValue 1");
}

TEST(AnIndexOfNoKey, MakesNoRow) {
  Users users;
  for (const char* index : {"", ".1.1", ".2147483648", ".4294967295"}) {
    EXPECT_EQ(users.Set({{std::string("5.1.6") + index, Int(5)}}),
              "noCreation 1")
        << index;
    EXPECT_EQ(users.Get(std::string("5.1.6") + index), "noSuchInstance")
        << index;
  }
  EXPECT_EQ(users.table.Size(), 0U);
}

TEST(ALimitOfRows, RefusesWhatIsAboveIt) {
  Users users;
  users.table.Limit(3);
  users.table.Insert(1, {});
  const auto make = [](int row) {
    return Users::Status(RowStatus::CreateAndWait, row);
  };
  EXPECT_EQ(users.Set({make(2), make(3), make(4)}), "resourceUnavailable 3");
  EXPECT_EQ(users.Set({make(2), make(3)}), "noError");
  EXPECT_EQ(users.Set({make(4)}), "resourceUnavailable 1");
  EXPECT_EQ(users.Set({Users::Status(RowStatus::Destroy, 2)}), "noError");
  EXPECT_EQ(users.Set({make(4)}), "noError");
}

TEST(ALimitOfRows, CountsThoseThatFunctionsTell) {
  Device device;
  snmp::Module module(device.agent, kBase);
  snmp::Table<int, User> table(module, "5");
  std::map<int, User> users{{1, {}}, {7, {}}};
  table.Column(4, &User::plain, snmp::ReadCreate())
      .RowStatus(6)
      .Limit(3)
      .Virtual(
          [&](int key) {
            return users.count(key) ? std::optional(users[key]) : std::nullopt;
          },
          [&](const int* key) {
            const auto next = key ? users.upper_bound(*key) : users.begin();
            return next == users.end() ? std::nullopt
                                       : std::optional(next->first);
          })
      .Apply([&](const auto& change) {
        if (change.after) {
          users[change.key] = *change.after;
        } else {
          users.erase(change.key);
        }
      });
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.6.2", Int(4)}, {"5.1.6.3", Int(4)}}),
            "resourceUnavailable 2");
  EXPECT_EQ(device.Set({{"5.1.6.2", Int(4)}}), "noError");
  EXPECT_EQ(device.Set({{"5.1.6.3", Int(4)}}), "resourceUnavailable 1");
  EXPECT_EQ(device.Set({{"5.1.6.7", Int(6)}}), "noError");
  EXPECT_EQ(device.Set({{"5.1.6.3", Int(4)}}), "noError");
  EXPECT_EQ(users.size(), 3U);
}

TEST(ALimitOfRows, CountsThoseOfOtherSetsUnderWay) {
  Users users;
  users.table.Limit(1);
  Phases first(users);
  Phases second(users);
  EXPECT_EQ(first.Test({Users::Status(RowStatus::CreateAndWait, 1)}),
            "noError");
  EXPECT_EQ(second.Test({Users::Status(RowStatus::CreateAndWait, 2)}),
            "resourceUnavailable 1");
}

TEST(AStorageType, OfARowThatIsKeptForGoodIsNotWritten) {
  Users users;
  users.table.Insert(1, {1, 2, 3, StorageType::Permanent});
  users.table.Insert(2, {1, 2, 3, StorageType::ReadOnly});
  users.table.Insert(3, {});
  EXPECT_EQ(users.Set({Users::Value(5, 2, 1)}), "wrongValue 1");
  EXPECT_EQ(users.Set({Users::Value(5, 2, 2)}), "wrongValue 1");
  EXPECT_EQ(users.Set({Users::Value(4, 2, 2)}), "notWritable 1");
  EXPECT_EQ(users.Set({Users::Value(4, 2, 1), Users::Value(5, 2, 1)}),
            "wrongValue 2");
  EXPECT_EQ(users.Set({Users::Value(5, 4, 3)}), "wrongValue 1");
  EXPECT_EQ(users.Set({Users::Value(5, 3, 3)}), "noError");
  EXPECT_EQ(users.table.Find(3)->storage, StorageType::NonVolatile);
}

TEST(ARowThatTheApplicationSets, IsNoLongerMissingAnything) {
  Users users;
  ASSERT_EQ(users.Set({Users::Status(RowStatus::CreateAndWait)}), "noError");
  users.table.Set(1, {7, 8, 9, StorageType::Volatile});
  EXPECT_EQ(users.table.Status(1), RowStatus::NotInService);
  EXPECT_EQ(users.Get(Users::Cell(2, 1)), "INTEGER 7");
  EXPECT_EQ(users.Set({Users::Status(RowStatus::Active)}), "noError");
}

TEST(ARowThatTheApplicationErases, LeavesNoStatusBehind) {
  Users users;
  ASSERT_EQ(users.Set({Users::Status(RowStatus::CreateAndWait)}), "noError");
  users.table.Erase(1);
  EXPECT_EQ(users.table.Status(1), RowStatus::None);
  users.table.Insert(1, {});
  EXPECT_EQ(users.table.Status(1), RowStatus::Active);
  EXPECT_EQ(users.Get(Users::Cell(2, 1)), "INTEGER 10");
}

TEST(ARowThatTheApplicationPuts, IsNotInServiceIfItSaysSo) {
  Users users;
  EXPECT_FALSE(users.table.SetStatus(1, RowStatus::NotInService));
  users.table.Insert(1, {});
  EXPECT_TRUE(users.table.SetStatus(1, RowStatus::NotInService));
  EXPECT_EQ(users.table.Status(1), RowStatus::NotInService);
  EXPECT_EQ(users.Set({Users::Status(RowStatus::Active)}), "noError");
  EXPECT_EQ(users.table.Status(1), RowStatus::Active);
  EXPECT_THROW(users.table.SetStatus(1, RowStatus::CreateAndGo),
               std::invalid_argument);
}

TEST(ARowThatIsNotReady, IsActiveIfTheApplicationSaysSo) {
  Users users;
  ASSERT_EQ(users.Set({Users::Status(RowStatus::CreateAndWait)}), "noError");
  EXPECT_TRUE(users.table.SetStatus(1, RowStatus::Active));
  EXPECT_EQ(users.Get(Users::Cell(2, 1)), "INTEGER 10");
}

TEST(ARowOfABorrowedContainer, IsErasedByItsOwnKeyWithItsStatus) {
  Device device;
  snmp::Module module(device.agent, kBase);
  using Key = std::string;
  std::map<Key, User, snmp::IndexOrder<Key>> rows;
  snmp::Table table(module, "5", rows);
  table.Column(1, &User::quota, snmp::ReadCreate()).RowStatus(2);
  device.Connect();
  const std::string cell =
      "5.1.2.17.97.97.97.97.97.97.97.97.97.97.97.97.97.97.97.97.97";
  ASSERT_EQ(device.Set({{cell, Int(5)}}), "noError");
  ASSERT_EQ(device.Get(cell), "INTEGER 2");
  EXPECT_TRUE(table.Erase(rows.begin()->first));
  EXPECT_TRUE(table.Insert(Key(17, 'a'), {}));
  EXPECT_EQ(device.Get(cell), "INTEGER 1");
}

TEST(ATable, HasOneRowStatus) {
  Users users;
  EXPECT_THROW(users.table.RowStatus(9), std::invalid_argument);
}

}  // namespace
