// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Tables at a real snmpd: walks by GETNEXT and GETBULK while rows come and go,
// rows that managers make, and indexes that Net-SNMP has trouble with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Served.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

struct User {
  std::string shell = "/bin/sh";
  int quota = 10;
};

const std::string kTable = "." + std::string(Served::kSubtree) + ".5";
const std::string kEntry = kTable + ".1.";

// The objects that a walk by GETBULK shows.
std::vector<std::string> BulkWalked(const testkit::Manager& manager,
                                    const std::string& oid) {
  std::vector<std::string> lines = manager.BulkWalk(oid).Lines();
  const std::string end = "No more variables left";
  if (!lines.empty() && lines.back().find(end) != std::string::npos) {
    lines.pop_back();
  }
  return lines;
}

struct Users : Served {
  Users() {
    table.Column(2, &User::shell, snmp::ReadCreate().Size(1, 64).Required())
        .Column(3, &User::quota, snmp::ReadCreate().Range(0, 1000))
        .RowStatus(4);
  }
  std::string Status(const std::string& row) const {
    return ShownAt(master.Manager(), kEntry + "4." + row);
  }

  snmp::Table<std::string, User> table{module, "5"};
};

TEST(AManager, MakesChangesAndDestroysARow) {
  Users users;
  users.Start();
  const std::string row = "3.98.111.98";  // bob
  EXPECT_EQ(users.Set({kEntry + "4." + row, "i", "5"}), "None");
  EXPECT_EQ(users.Status(row), "INTEGER: 3");
  EXPECT_EQ(users.Set({kEntry + "4." + row, "i", "1"}),
            "inconsistentValue " + kEntry + "4." + row);
  EXPECT_EQ(users.Set({kEntry + "2." + row, "s", "/bin/zsh",
                       kEntry + "4." + row, "i", "1"}),
            "None");
  EXPECT_THAT(users.master.Manager().Objects(kTable),
              ElementsAre(kEntry + "2." + row + " = STRING: \"/bin/zsh\"",
                          kEntry + "3." + row + " = INTEGER: 10",
                          kEntry + "4." + row + " = INTEGER: 1"));
  EXPECT_EQ(users.table.Find("bob")->shell, "/bin/zsh");
  EXPECT_EQ(users.Set({kEntry + "3." + row, "i", "1001"}),
            "wrongValue " + kEntry + "3." + row);
  EXPECT_EQ(users.Set({kEntry + "4." + row, "i", "6"}), "None");
  EXPECT_THAT(users.master.Manager().Objects(kTable), ElementsAre());
}

TEST(AManager, MakesTwoRowsInOneRequestOrNone) {
  Users users;
  users.table.Limit(2);
  users.Start();
  const auto make = [](const std::string& row) {
    return std::vector<std::string>{kEntry + "4." + row, "i", "4",
                                    kEntry + "2." + row, "s", "/bin/sh"};
  };
  std::vector<std::string> both = make("1.97");
  for (const std::string& word : make("1.98")) both.push_back(word);
  std::vector<std::string> three = both;
  for (const std::string& word : make("1.99")) three.push_back(word);
  EXPECT_THAT(users.Set(three), HasSubstr("resourceUnavailable"));
  EXPECT_EQ(users.table.Size(), 0U);
  EXPECT_EQ(users.Set(both), "None");
  EXPECT_EQ(users.table.Size(), 2U);
}

TEST(ABulkWalk, IsCompleteWhileRowsComeAndGo) {
  Served served;
  snmp::Table<int, User> table(served.module, "5");
  table.Column(3, &User::quota);
  for (int key = 0; key < 2000; key += 2) table.Insert(key, {});
  served.Start();
  std::atomic<bool> ends{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&, i] {
      for (int n = i; !ends; n += 7) {
        const int key = 2 * (n % 1000) + 1;
        if (!table.Insert(key, {})) table.Erase(key);
        std::this_thread::yield();
      }
    });
  }
  const std::vector<std::string> seen =
      BulkWalked(served.master.Manager(), kTable);
  ends = true;
  for (std::thread& thread : threads) thread.join();

  int last = -1;
  int stayed = 0;
  for (const std::string& line : seen) {
    ASSERT_EQ(line.rfind(kEntry + "3.", 0), 0U) << line;
    const int key = std::stoi(line.substr(kEntry.size() + 2));
    ASSERT_GT(key, last);
    last = key;
    if (key % 2 == 0) ++stayed;
  }
  EXPECT_EQ(stayed, 1000);
}

// Net-SNMP reads sub-identifiers through an int in many places.
TEST(ARowAboveTwoToThe31, IsServedByNetSnmpLikeAnother) {
  Served served;
  snmp::Table<std::uint32_t, User> table(served.module, "5");
  table.Column(2, [](std::uint32_t, const User&) { return 5; })
      .Column(3, &User::quota, snmp::ReadWrite());
  snmp::Scalar behind(served.module, "6", 9);
  table.Insert(2147483647U, {"", 1});
  table.Insert(2147483648U, {"", 2});
  table.Insert(4294967295U, {"", 3});
  served.Start();
  EXPECT_EQ(ShownAt(served.master.Manager(), kEntry + "3.2147483648"),
            "INTEGER: 2");
  EXPECT_EQ(served.Set({kEntry + "3.4294967295", "i", "7"}), "None");
  const std::vector<std::string> all{kEntry + "2.2147483647 = INTEGER: 5",
                                     kEntry + "2.2147483648 = INTEGER: 5",
                                     kEntry + "2.4294967295 = INTEGER: 5",
                                     kEntry + "3.2147483647 = INTEGER: 1",
                                     kEntry + "3.2147483648 = INTEGER: 2",
                                     kEntry + "3.4294967295 = INTEGER: 7",
                                     Served::Name("6") + " = INTEGER: 9"};
  const std::string subtree = "." + std::string(Served::kSubtree);
  EXPECT_THAT(served.master.Manager().Objects(subtree), ElementsAreArray(all));
  EXPECT_THAT(BulkWalked(served.master.Manager(), subtree),
              ElementsAreArray(all));
}

}  // namespace
