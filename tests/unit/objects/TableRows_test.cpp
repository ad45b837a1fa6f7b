// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Where rows come from and what is seen of them: columns of every kind, tables
// that share rows, containers of the application's, loaders, functions; and
// rows that come and go during walks.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using snmp::RowStatus;

struct Cell {
  int value = 0;
  std::optional<int> sometimes;
};

struct Module : Device {
  snmp::Module module{agent, kBase};
};

using NameAndNumber = std::tuple<std::string, int>;

TEST(ATable, ShowsItsColumnsInTheOrderOfTheirNumbers) {
  Module device;
  snmp::Table<NameAndNumber, Cell> table(device.module, "5");
  table.Column(900, &Cell::value)
      .Column(7, 42)
      .Column(3, [](const NameAndNumber& key,
                    const Cell& cell) { return std::get<1>(key) + cell.value; })
      .Index<0>(1)
      .Index<1>(2);
  table.Insert({"b", 1}, {10, {}});
  table.Insert({"a", 2}, {20, {}});
  device.Connect();
  EXPECT_EQ(device.Walk("5"),
            "5.1.1.1.97.2 OCTET STRING \"a\", 5.1.1.1.98.1 OCTET STRING \"b\", "
            "5.1.2.1.97.2 INTEGER 2, 5.1.2.1.98.1 INTEGER 1, "
            "5.1.3.1.97.2 INTEGER 22, 5.1.3.1.98.1 INTEGER 11, "
            "5.1.7.1.97.2 INTEGER 42, 5.1.7.1.98.1 INTEGER 42, "
            "5.1.900.1.97.2 INTEGER 20, 5.1.900.1.98.1 INTEGER 10");
  EXPECT_EQ(device.Set({{"5.1.2.1.97.2", Int(1)}}), "notWritable 1");
}

struct Located {
  int place = 3;
  snmp::StorageType storage = snmp::StorageType::Volatile;
};
struct LocatedCell : Located {
  int value = 4;
};

TEST(ATable, ShowsMembersOfTheBaseOfItsRows) {
  Module device;
  snmp::Table<int, LocatedCell> table(device.module, "5");
  table.Column(1, &LocatedCell::place, snmp::ReadWrite())
      .Column(2, &LocatedCell::value)
      .StorageType(3, &LocatedCell::storage);
  table.Insert(1, {});
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(7)}}), "noError");
  EXPECT_EQ(device.Walk("5"),
            "5.1.1.1 INTEGER 7, 5.1.2.1 INTEGER 4, 5.1.3.1 INTEGER 2");
}

TEST(ATable, HasRowsOfAnyType) {
  Module device;
  Cell cell{5, {}};
  std::map<int, int> numbers{{1, 10}};
  std::map<int, Cell*> pointers{{2, &cell}};
  snmp::Table first(device.module, "5", numbers);
  snmp::Table second(device.module, "6", pointers);
  first.Column(1, [](int, int number) { return number; });
  second.Column(1, [](int, const Cell* row) { return row->value; });
  device.Connect();
  EXPECT_EQ(device.Walk("5"), "5.1.1.1 INTEGER 10, 6.1.1.2 INTEGER 5");
}

TEST(ATable, TellsNoObjectFromNoInstance) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(2, &Cell::value);
  device.Connect();
  EXPECT_EQ(device.GetAll({"5.1.2.1", "5.1.2", "5.1.2.1.1"}),
            "noSuchInstance, noSuchInstance, noSuchInstance");
  EXPECT_EQ(device.GetAll({"5", "5.1", "5.1.1.1", "5.2.2.1"}),
            "noSuchObject, noSuchObject, noSuchObject, noSuchObject");
}

TEST(AnAddressInTheIndex, HasAColumnForItsTypeAndOneForItself) {
  Module device;
  snmp::Table<snmp::InetAddress, Cell> table(device.module, "5");
  table.Index(1, 2).Column(3, &Cell::value);
  table.Insert(snmp::InetAddress("192.0.2.1"), {5, {}});
  device.Connect();
  EXPECT_EQ(device.GetAll({"5.1.1.1.4.192.0.2.1", "5.1.3.1.4.192.0.2.1"}),
            "INTEGER 1, INTEGER 5");
}

TEST(ACellThatARowLacks, IsPassedOverByAWalk) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::sometimes).Column(2, [](int key, const Cell&) {
    return key == 2 ? std::optional<int>() : key;
  });
  table.Insert(1, {0, {}});
  table.Insert(2, {0, 5});
  table.Insert(3, {0, {}});
  device.Connect();
  EXPECT_EQ(device.Walk("5"),
            "5.1.1.2 INTEGER 5, 5.1.2.1 INTEGER 1, 5.1.2.3 INTEGER 3");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.2"}),
            "noSuchInstance, noSuchInstance");
}

TEST(AKeyThatCannotBeAnIndex, IsRefused) {
  Module device;
  snmp::Table<std::string, Cell> names(device.module, "5");
  snmp::Table<int, Cell> numbers(device.module, "6");
  // The name of a cell is 8 for the module, table, entry, column, a length.
  EXPECT_TRUE(names.Insert(std::string(128 - 8 - 4, 'x'), {}));
  EXPECT_THROW(names.Insert(std::string(128 - 8 - 3, 'x'), {}),
               std::invalid_argument);
  EXPECT_THROW(numbers.Set(-1, {}), std::invalid_argument);
  EXPECT_THROW(numbers.Replace({{1, {}}, {-1, {}}}), std::invalid_argument);
  EXPECT_EQ(numbers.Size(), 0U);
}

TEST(ABorrowedRowWhoseNameIsTooLong, IsPassedOver) {
  Module device;
  std::map<std::string, Cell, snmp::IndexOrder<std::string>> rows;
  rows["a"], rows[std::string(122, 'x')], rows[std::string(500, 'y')];
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value);
  device.Connect();
  EXPECT_EQ(device.Walk("5"), "5.1.1.1.97 INTEGER 0");
}

TEST(ABorrowedRowWhoseKeyHasMoreThan32Bits, IsPassedOver) {
  enum class Serial : std::uint64_t {};
  Module device;
  std::map<Serial, Cell> rows;
  rows[Serial{7}].value = 7, rows[Serial{(1ULL << 32) + 3}].value = 8;
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value);
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.3"), "noSuchInstance");
  EXPECT_EQ(device.GetNext("5"), "5.1.1.7 INTEGER 7");
  EXPECT_EQ(device.GetNext("5.1.1.7"), "5.1.1.7 endOfMibView");
}

TEST(ABorrowedRowWhoseKeyHasMoreThan32Bits, IsNotTakenForAnother) {
  enum class Serial : std::uint64_t {};
  Module device;
  std::map<Serial, Cell> rows;
  rows[Serial{(1ULL << 32) + 3}].value = 8;
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value, snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.3"), "noSuchInstance");
  EXPECT_EQ(device.Set({{"5.1.1.3", Int(9)}}), "noCreation 1");
}

TEST(ABorrowedRowWhoseKeyIsNoIndex, IsPassedOverInAnIndexOrder) {
  enum class Serial : std::uint64_t {};
  Module device;
  std::map<Serial, Cell, snmp::IndexOrder<Serial>> rows;
  rows[Serial{2}] = rows[Serial{(1ULL << 32) + 3}] = rows[Serial{7}] = {1, {}};
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value);
  std::map<int, Cell, snmp::IndexOrder<int>> numbers;
  numbers[-1] = numbers[2] = {1, {}};
  snmp::Table numbered(device.module, "6", numbers);
  numbered.Column(1, &Cell::value);
  device.Connect();
  EXPECT_EQ(device.Walk("5"),
            "5.1.1.2 INTEGER 1, 5.1.1.7 INTEGER 1, 6.1.1.2 INTEGER 1");
  EXPECT_EQ(device.Get("6.1.1.4294967295"), "noSuchInstance");
}

TEST(ABorrowedContainer, IsServedAsItIs) {
  Module device;
  std::map<int, Cell> rows{{-1, {1, {}}}, {1, {2, {}}}};
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value, snmp::ReadWrite());
  device.Connect();
  EXPECT_EQ(device.Walk("5"), "5.1.1.1 INTEGER 2");
  {
    const auto lock = device.agent.Lock();
    rows[7].value = 7;
    rows.erase(1);
  }
  EXPECT_EQ(device.Walk("5"), "5.1.1.7 INTEGER 7");
  EXPECT_EQ(device.Set({{"5.1.1.7", Int(8)}}), "noError");
  EXPECT_EQ(rows[7].value, 8);
}

TEST(ATableThatAugments, HasTheRowsOfTheOther) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::value, snmp::ReadCreate().Required()).RowStatus(2);
  snmp::Table<int, Cell> more(device.module, "6", table);
  more.Column(1, &Cell::sometimes, snmp::ReadCreate().Required());
  device.Connect();
  // In whatever order the cells come; the row needs those of both.
  EXPECT_EQ(device.Set({{"5.1.2.1", Int(4)}, {"5.1.1.1", Int(5)}}),
            "inconsistentValue 1");
  EXPECT_EQ(
      device.Set(
          {{"6.1.1.1", Int(6)}, {"5.1.2.1", Int(4)}, {"5.1.1.1", Int(5)}}),
      "noError");
  EXPECT_EQ(device.Walk("5") + ", " + device.Walk("6"),
            "5.1.1.1 INTEGER 5, 5.1.2.1 INTEGER 1, 6.1.1.1 INTEGER 6, "
            "6.1.1.1 INTEGER 6");
  EXPECT_EQ(device.Set({{"6.1.1.2", Int(6)}}), "inconsistentName 1");
  EXPECT_EQ(device.Set({{"5.1.2.2", Int(5)}, {"5.1.1.2", Int(5)}}), "noError");
  EXPECT_EQ(table.Status(2), RowStatus::NotReady);
  EXPECT_EQ(device.Set({{"6.1.1.2", Int(6)}, {"5.1.2.2", Int(1)}}), "noError");
  EXPECT_EQ(table.Status(2), RowStatus::Active);
}

TEST(ATableThatAugments, StaysWithItsRowsWhenTheOtherGoes) {
  Module device;
  std::optional<snmp::Table<int, Cell>> table;
  table.emplace(device.module, "5");
  table->RowStatus(2);
  table->Insert(1, {3, {}});
  snmp::Table<int, Cell> more(device.module, "6", *table);
  more.Column(1, &Cell::value);
  device.Connect();
  table.reset();
  EXPECT_EQ(device.Walk("5"), "6.1.1.1 INTEGER 3");
}

TEST(ARequiredColumn, IsNoLongerNeededWhenItsTableGoes) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::value, snmp::ReadCreate()).RowStatus(2);
  std::optional<snmp::Table<int, Cell>> more;
  more.emplace(device.module, "6", table);
  more->Column(1, &Cell::sometimes, snmp::ReadCreate().Required());
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.2.1", Int(4)}}), "inconsistentValue 1");
  more.reset();
  EXPECT_EQ(device.Set({{"5.1.2.1", Int(4)}}), "noError");
}

TEST(ALoader, FillsTheTableOncePerTimeToLive) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  int loads = 0;
  table.Column(1, &Cell::value)
      .Load(
          [&](auto& rows) {
            ++loads;
            rows[loads].value = loads;
            rows[-1];  // has no index
          },
          1h);
  EXPECT_EQ(loads, 0);
  device.Connect();
  EXPECT_EQ(device.Walk("5"), "5.1.1.1 INTEGER 1");
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 1");
  EXPECT_EQ(loads, 1);
}

TEST(ALoader, IsAskedAgainWhenItsRowsAreTooOld) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  int loads = 0;
  table.Column(1, &Cell::value, snmp::ReadWrite())
      .Load(
          [&](auto& rows) {
            ++loads;
            rows[1].value = loads, rows[2].value = loads;
          },
          0s);
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 1");
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 2");
  // Not in the middle of a SET.
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(7)}, {"5.1.1.2", Int(8)}}), "noError");
}

TEST(ALoader, MayBeReplacedFromWithin) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  const auto second = [](auto& rows) { rows[2].value = 2; };
  table.Column(1, &Cell::value)
      .Load(
          [&, numbers = std::vector<int>{1, 3}](auto& rows) {
            table.Load(second, 0s);
            for (const int number : numbers) rows[number].value = number;
          },
          1h);
  device.Connect();
  EXPECT_EQ(device.GetAll({"5.1.1.3", "5.1.1.2"}), "INTEGER 3, INTEGER 2");
}

TEST(ALoader, MayAddColumns) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  bool isNew = true;
  table.Column(1, &Cell::value, snmp::ReadWrite())
      .Load(
          [&](auto& rows) {
            for (unsigned number = 2; isNew && number < 40; ++number) {
              table.Column(number, [](int, const Cell&) { return 8; });
            }
            isNew = false;
            rows[1].value = 7;
          },
          1h);
  device.Connect();
  EXPECT_EQ(device.GetNext("5"), "5.1.1.1 INTEGER 7");
  EXPECT_EQ(device.GetNext("5.1.1.1"), "5.1.2.1 INTEGER 8");
  EXPECT_EQ(device.GetNext("5.1.38.1"), "5.1.39.1 INTEGER 8");
}

TEST(ALoader, LeavesTheRowThatAFunctionIsReading) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  snmp::Notification read(device.module, "0.1");
  int loads = 0;
  table.Column(1, &Cell::value)
      .Column(2,
              [&](int key, const Cell& cell) {
                read.Send({table.Cell(key, 1)});
                return cell.value;
              })
      .Load([&](auto& rows) { rows[1].value = ++loads; }, 0s);
  device.Connect();
  EXPECT_EQ(device.Get("5.1.2.1"), "INTEGER 1");
  EXPECT_EQ(loads, 1);
}

TEST(ALoader, LeavesTheRowsThatTheApplicationGoesThrough) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  snmp::Notification seen(device.module, "0.1");
  table.Column(1, &Cell::value)
      .Load([](auto& rows) { rows[1].value = rows[2].value = 3; }, 0s);
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 3");
  int sum = 0;
  table.ForEach([&](int key, const Cell& cell) {
    seen.Send({table.Cell(key, 1)});
    sum += cell.value;
  });
  EXPECT_EQ(sum, 6);
  EXPECT_TRUE(table.Change(2, [&](Cell& cell) {
    seen.Send({table.Cell(1, 1)});
    cell.value = 4;
  }));
  EXPECT_EQ(table.Find(2)->value, 4);
}

TEST(AColumn, MayDestroyItsTableAndTheRows) {
  struct Cells {
    std::map<int, Cell> rows{{1, {}}, {2, {}}};
    snmp::Table<int, Cell, std::map<int, Cell>> table;
    explicit Cells(snmp::Module& module) : table(module, "5", rows) {}
  };
  Module device;
  auto cells = std::make_unique<Cells>(device.module);
  cells->table.Column(1, [&](int, const Cell&) {
    cells.reset();
    return std::optional<int>();
  });
  device.Connect();
  EXPECT_EQ(device.GetNext("5"), "5 endOfMibView");
  EXPECT_EQ(cells, nullptr);
}

TEST(AChange, MayDestroyItsTable) {
  Module device;
  std::map<int, Cell> rows{{1, {}}};
  auto table = std::make_unique<snmp::Table<int, Cell, std::map<int, Cell>>>(
      device.module, "5", rows);
  table->Change(1, [&](Cell& cell) {
    table.reset();
    cell.value = 2;
  });
  EXPECT_EQ(rows[1].value, 2);
}

TEST(ALoaderThatThrows, IsAskedAgain) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  bool fails = true;
  table.Column(1, &Cell::value)
      .Load(
          [&](auto& rows) {
            if (fails) throw std::runtime_error("no rows today");
            rows[1].value = 5;
          },
          1h);
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.1"), "genErr 1");
  EXPECT_TRUE(device.HasLogged("no rows today"));
  fails = false;
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 5");
}

TEST(ATableOfFunctions, IsAsLargeAsTheySay) {
  Module device;
  snmp::Table<unsigned, Cell> table(device.module, "5");
  // The odd numbers, of which none is held.
  table.Column(1, &Cell::value)
      .Virtual(
          [](unsigned key) {
            return key % 2 == 1
                       ? std::optional(Cell{static_cast<int>(key % 1000), {}})
                       : std::nullopt;
          },
          [](const unsigned* key) -> std::optional<unsigned> {
            const unsigned next = key ? *key + 1 : 1;
            if (key && next == 0) return std::nullopt;
            return next % 2 == 1 ? next : next + 1;
          });
  device.Connect();
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.1.2", "5.1.1.4294967295"}),
            "INTEGER 1, noSuchInstance, INTEGER 295");
  EXPECT_EQ(device.GetNext("5"), "5.1.1.1 INTEGER 1");
  EXPECT_EQ(device.GetNext("5.1.1.1000000"), "5.1.1.1000001 INTEGER 1");
  EXPECT_EQ(device.GetNext("5.1.1.1000001.7"), "5.1.1.1000003 INTEGER 3");
  EXPECT_EQ(device.GetNext("5.1.1.4294967295"),
            "5.1.1.4294967295 endOfMibView");
}

TEST(ATableOfFunctions, IsWrittenByApply) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  std::map<int, int> values{{1, 10}, {2, 20}};
  table.Column(1, &Cell::value, snmp::ReadWrite())
      .Virtual(
          [&](int key) {
            return values.count(key) ? std::optional(Cell{values[key], {}})
                                     : std::nullopt;
          },
          [&](const int* key) -> std::optional<int> {
            const auto next = key ? values.upper_bound(*key) : values.begin();
            if (next == values.end()) return std::nullopt;
            return next->first;
          })
      .Apply([&](const auto& change) {
        values[change.key] = change.after->value;
      });
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.2", Int(5)}}), "noError");
  EXPECT_EQ(device.Set({{"5.1.1.3", Int(5)}}), "noCreation 1");
  EXPECT_EQ(device.Walk("5"), "5.1.1.1 INTEGER 10, 5.1.1.2 INTEGER 5");
}

TEST(ATableOfFunctions, KeepsTheRowThatAFunctionIsReading) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  snmp::Notification read(device.module, "0.1");
  table.Column(1, &Cell::value)
      .Column(2,
              [&](const int& key, const Cell& cell) {
                read.Send({table.Cell(key + 1, key % 3 == 0 ? 1 : 2)});
                return cell.value + key;
              })
      .Virtual(
          [](int key) {
            return Cell{10 * key, {}};
          },
          [](const int* key) { return key ? *key + 1 : 1; });
  device.Connect();
  EXPECT_EQ(device.Get("5.1.2.1"), "INTEGER 11");
}

TEST(ATableOfFunctions, MayHaveThemReplacedFromWithin) {
  Module device;
  snmp::Table<int, std::string> table(device.module, "5");
  std::function<void(char)> tell = [&](char letter) {
    table.Virtual(
        [&tell, letter](int) {
          std::string row(100, letter);
          tell('b');
          return row + letter;
        },
        [](const int*) { return std::optional<int>(); });
  };
  tell('a');
  table.Column(1, [&](int, const std::string& row) {
    tell('c');
    return row.substr(100);
  });
  device.Connect();
  EXPECT_EQ(device.Get("5.1.1.1"), "OCTET STRING \"a\"");
  EXPECT_EQ(device.Get("5.1.1.1"), "OCTET STRING \"c\"");
}

TEST(AReplacement, IsSeenInOnePiece) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::value, snmp::ReadCreate()).RowStatus(2);
  table.Insert(1, {1, {}});
  table.Insert(2, {2, {}});
  device.Connect();
  ASSERT_EQ(device.Set({{"5.1.2.2", Int(2)}}), "noError");
  table.Replace({{2, {5, {}}}, {3, {6, {}}}});
  EXPECT_EQ(device.Walk("5"),
            "5.1.1.2 INTEGER 5, 5.1.1.3 INTEGER 6, 5.1.2.2 INTEGER 2, "
            "5.1.2.3 INTEGER 1");
}

// ---- Rows that come and go.

// Adds and erases rows with odd numbers as fast as it can.
class Churn {
 public:
  Churn(snmp::Table<int, Cell>& table, int rows) {
    for (int i = 0; i < 8; ++i) {
      threads_.emplace_back([this, &table, rows, i] {
        for (int n = i; !ends_; n += 7) {
          const int key = 2 * (n % rows) + 1;
          if (!table.Insert(key, {})) table.Erase(key);
          // On a busy machine too, the agent is to have its turn.
          std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
      });
    }
  }
  ~Churn() {
    ends_ = true;
    for (auto& thread : threads_) thread.join();
  }

 private:
  std::atomic<bool> ends_{false};
  std::vector<std::thread> threads_;
};

// One whose rows move when others come or go.
class SortedRows {
 public:
  using key_type = int;
  using mapped_type = Cell;
  using key_compare = std::less<int>;
  using value_type = std::pair<int, Cell>;
  using iterator = std::vector<value_type>::iterator;

  iterator begin() { return rows_.begin(); }
  iterator end() { return rows_.end(); }
  std::size_t size() const { return rows_.size(); }
  iterator lower_bound(int key) {
    return std::lower_bound(begin(), end(), key, [](const auto& row, int k) {
      return row.first < k;
    });
  }
  iterator upper_bound(int key) {
    const iterator place = find(key);
    return place == end() ? lower_bound(key) : place + 1;
  }
  iterator find(int key) {
    const iterator place = lower_bound(key);
    return place == end() || place->first != key ? end() : place;
  }
  std::pair<iterator, bool> insert_or_assign(int key, Cell row) {
    const iterator place = find(key);
    if (place == end())
      return {rows_.insert(lower_bound(key), {key, row}), true};
    place->second = row;
    return {place, false};
  }
  iterator erase(iterator place) { return rows_.erase(place); }
  std::size_t erase(int key) {
    const iterator place = find(key);
    if (place == end()) return 0;
    rows_.erase(place);
    rows_.shrink_to_fit();
    return 1;
  }

 private:
  std::vector<value_type> rows_;
};

TEST(AReplacement, FitsAContainerWhoseRowsMove) {
  Module device;
  SortedRows rows;
  for (int key = 1; key <= 9; ++key) rows.insert_or_assign(key, {});
  snmp::Table table(device.module, "5", rows);
  table.Column(1, &Cell::value);
  device.Connect();
  SortedRows others;
  others.insert_or_assign(5, {50, {}});
  others.insert_or_assign(10, {100, {}});
  table.Replace(others);
  EXPECT_EQ(device.Walk("5"), "5.1.1.5 INTEGER 50, 5.1.1.10 INTEGER 100");
}

TEST(AWalkWhileRowsComeAndGo, SeesOnceEachRowThatStays) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::value);
  constexpr int kRows = 100;
  for (int row = 0; row < kRows; ++row) table.Insert(2 * row, {});
  device.Connect();
  const Churn churn(table, kRows);
  for (int walk = 0; walk < 5; ++walk) {
    std::vector<unsigned> stayed;
    wire::SearchRange range = After("5", "6");
    while (true) {
      const wire::Response response =
          device.Master().Ask(wire::GetNext{{range}});
      ASSERT_EQ(response.error, 0);
      const wire::Varbind& found = response.varbinds.at(0);
      if (found.value.type == wire::Type::kEndOfMibView) break;
      ASSERT_GT(found.name, range.start);
      range.start = found.name;
      if (found.name.back() % 2 == 0) stayed.push_back(found.name.back());
    }
    ASSERT_EQ(stayed.size(), static_cast<std::size_t>(kRows));
    for (unsigned row = 0; row < kRows; ++row) EXPECT_EQ(stayed[row], 2 * row);
  }
}

TEST(AMillionRows, AreWalkedCompleteAndInOrder) {
  Module device;
  snmp::Table<int, Cell> table(device.module, "5");
  table.Column(1, &Cell::value);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    defined(SNMPSUBAGENT_EMULATED)
  constexpr int kRows = 100000;  // more would take minutes
#else
  constexpr int kRows = 1000000;
#endif
  for (int row = 1; row <= kRows; ++row) table.Insert(row, {row, {}});
  device.Connect();
  int row = 0;
  for (wire::SearchRange range = After("5", "6"); row < kRows;) {
    const wire::Response response =
        device.Master().Ask(wire::GetBulk{0, 1000, {range}});
    ASSERT_FALSE(response.varbinds.empty());
    for (const wire::Varbind& found : response.varbinds) {
      if (found.value.type == wire::Type::kEndOfMibView) break;
      ASSERT_EQ(found.name.back(), static_cast<unsigned>(++row));
    }
    range.start = response.varbinds.back().name;
  }
  const std::string last = "5.1.1." + std::to_string(kRows);
  EXPECT_EQ(device.GetNext({After(last, "6")}), last + " endOfMibView");
}

}  // namespace
