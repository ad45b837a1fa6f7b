// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs of cells: rows and tables of one PDU, checked as they would be, applied,
// undone; and rows that the application changes meanwhile.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using snmp::RowStatus;
using snmp::SetError;

struct Line {
  int speed = 10;
  std::optional<int> vlan;
  std::optional<int> tag;
};
using LineChange = snmp::RowChange<int, Line>;

std::string Shown(const std::optional<Line>& port) {
  return port ? std::to_string(port->speed) : "none";
}

struct Switch : Device {
  Switch() {
    ports.Column(1, &Line::speed, snmp::ReadCreate().Range(0, 1000))
        .Column(2, &Line::vlan, snmp::ReadCreate())
        .Column(3, &Line::tag, snmp::ReadWrite())
        .RowStatus(4)
        .Apply([this](const LineChange& change) {
          steps.push_back(std::to_string(change.key) + ": " +
                          Shown(change.before) + " to " + Shown(change.after));
          return change.key != refused ? SetError::None
                                       : SetError::ResourceUnavailable;
        })
        .Changed([this](const LineChange& change) {
          steps.push_back(std::to_string(change.key) + " is final");
        });
    others.Column(1, &Line::speed, snmp::ReadWrite());
    for (int key = 1; key <= 3; ++key) {
      ports.Insert(key, {});
      others.Insert(key, {});
    }
    Connect();
  }
  std::string Speeds() {
    return GetAll({"5.1.1.1", "5.1.1.2", "5.1.1.3", "6.1.1.1"});
  }

  snmp::Module module{agent, kBase};
  snmp::Table<int, Line> ports{module, "5"};
  snmp::Table<int, Line> others{module, "6"};
  int refused = 0;
  std::vector<std::string> steps;
};

using Steps = std::vector<std::string>;

TEST(ASetOfRows, IsAppliedRowByRowAndThenFinal) {
  Switch device;
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(1)},
                        {"5.1.1.2", Int(2)},
                        {"6.1.1.1", Int(3)},
                        {"5.1.2.1", Int(4)}}),
            "noError");
  EXPECT_EQ(device.Speeds(), "INTEGER 1, INTEGER 2, INTEGER 10, INTEGER 3");
  EXPECT_EQ(device.Get("5.1.2.1"), "INTEGER 4");
  EXPECT_EQ(device.steps,
            (Steps{"1: 10 to 1", "2: 10 to 2", "1 is final", "2 is final"}));
}

TEST(ASetOfRows, IsUndoneTheOtherWayRoundIfOneIsRefused) {
  Switch device;
  device.refused = 3;
  EXPECT_EQ(device.Set({{"6.1.1.1", Int(9)},
                        {"5.1.1.1", Int(1)},
                        {"5.1.4.2", Int(6)},
                        {"5.1.4.7", Int(4)},
                        {"5.1.1.3", Int(3)}}),
            "commitFailed 5");
  EXPECT_EQ(device.Speeds(), "INTEGER 10, INTEGER 10, INTEGER 10, INTEGER 10");
  EXPECT_EQ(device.ports.Size(), 3U);
  EXPECT_EQ(device.steps,
            (Steps{"1: 10 to 1", "2: 10 to none", "7: none to 10", "3: 10 to 3",
                   "7: 10 to none", "2: none to 10", "1: 1 to 10"}));
}

TEST(ASetOfRows, IsUndoneWhenTheMasterAgentSaysSo) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.1.1", Int(1)}, {"5.1.4.9", Int(5)}}), "noError");
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 10");
  EXPECT_EQ(device.Get("5.1.4.9"), "noSuchInstance");
  ASSERT_EQ(phases.Commit(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.4.9"}), "INTEGER 1, INTEGER 2");
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.4.9"}),
            "INTEGER 10, noSuchInstance");
  EXPECT_EQ(device.ports.Status(9), RowStatus::None);
}

TEST(AStatus, IsUndoneWithItsRow) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.1", Int(2)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  EXPECT_EQ(device.ports.Status(1), RowStatus::NotInService);
  ASSERT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.ports.Status(1), RowStatus::Active);
}

TEST(ACheck, SeesTheRowWithAllThatTheRequestWrites) {
  Switch device;
  device.ports.Check([](const LineChange& change) {
    return change.after && change.after->speed > 100 && !change.after->vlan
               ? SetError::InconsistentValue
               : SetError::None;
  });
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(200)}}), "inconsistentValue 1");
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(200)}, {"5.1.2.1", Int(1)}}),
            "noError");
  EXPECT_EQ(device.Set({{"5.1.1.2", Int(1)}, {"5.1.1.3", Int(200)}}),
            "inconsistentValue 2");
  EXPECT_EQ(device.Get("5.1.1.2"), "INTEGER 10");
}

TEST(AModulesCheck, SeesRowsAndScalarsAsTheyWouldBe) {
  Switch device;
  snmp::Scalar limit(device.module, "1", 100, snmp::ReadWrite());
  std::string seen;
  device.module.Check([&](const snmp::SetChange& change) {
    seen.clear();
    for (int key = 1; key <= 4; ++key) {
      seen += change.Names(device.ports, key) ? "+" : "-";
      const auto port = change.After(device.ports, key);
      seen += Shown(port) + " ";
      if (port && port->speed > change.After(limit)) {
        return SetError::InconsistentValue;
      }
    }
    return SetError::None;
  });
  EXPECT_EQ(device.Set({{"5.1.1.2", Int(101)}}), "inconsistentValue 1");
  EXPECT_EQ(device.Set({{"5.1.1.2", Int(101)},
                        {"1.0", Int(200)},
                        {"5.1.4.1", Int(6)},
                        {"5.1.4.4", Int(4)}}),
            "noError");
  EXPECT_EQ(seen, "+none +101 -10 +10 ");
}

TEST(AModulesCheck, IsAskedWhenASetNamesARowThatAnotherModuleHasToo) {
  Switch device;
  snmp::Module other(device.agent, "1.3.6.1.4.1.32473.8");
  snmp::Table more(other, "1", device.ports);
  more.Column(1, &Line::tag, snmp::ReadCreate());
  device.Master().ServeUntil(
      [&] { return device.Master().Registered().size() == 2; });
  other.Check([&](const snmp::SetChange& change) {
    return change.After(device.ports, 1)->tag == 4 ? SetError::InconsistentValue
                                                   : SetError::None;
  });
  const std::string tag = ".1.3.6.1.4.1.32473.8.1.1.1.1";
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(5)}, {tag, Int(4)}}),
            "inconsistentValue 2");
  Phases phases(device);
  EXPECT_EQ(phases.Test({{"5.1.1.1", Int(5)}}), "noError");
  EXPECT_EQ(phases.Test({{tag, Int(4)}}), "inconsistentValue 1");
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(5)}, {tag, Int(3)}}), "noError");
}

TEST(AModulesCheck, SeesRowsThatFunctionsTell) {
  Device device;
  snmp::Module module(device.agent, kBase);
  snmp::Table<int, Line> table(module, "5");
  table.Column(1, &Line::speed, snmp::ReadWrite())
      .Virtual(
          [](int key) {
            return key <= 2 ? std::optional(Line{key, {}, {}}) : std::nullopt;
          },
          [](const int* key) -> std::optional<int> {
            if (key && *key >= 2) return std::nullopt;
            return key ? *key + 1 : 1;
          });
  std::string seen;
  module.Check([&](const snmp::SetChange& change) {
    for (int key = 1; key <= 3; ++key) {
      seen += Shown(change.After(table, key)) + " ";
    }
    return SetError::None;
  });
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(7)}}), "noError");
  EXPECT_EQ(seen, "7 2 none ");
  EXPECT_TRUE(table.Contains(2));
  EXPECT_EQ(table.Status(2), RowStatus::Active);
  EXPECT_FALSE(table.Contains(3));
}

TEST(ACellThatARowLacks, IsMadeWhereTheColumnIsReadCreate) {
  Switch device;
  EXPECT_EQ(device.Get("5.1.2.1"), "noSuchInstance");
  EXPECT_EQ(device.Set({{"5.1.3.1", Int(5)}}), "noCreation 1");
  EXPECT_EQ(device.Set({{"5.1.2.1", Int(5)}}), "noError");
  EXPECT_EQ(device.Get("5.1.2.1"), "INTEGER 5");
  device.ports.Change(1, [](Line& port) { port.tag = 1; });
  EXPECT_EQ(device.Set({{"5.1.3.1", Int(5)}}), "noError");
}

TEST(ARowThatThereIsNot, IsNotWrittenWithoutARowStatus) {
  Switch device;
  EXPECT_EQ(device.Set({{"6.1.1.9", Int(5)}}), "noCreation 1");
  EXPECT_EQ(device.Set({{"5.1.1.9", Int(5)}}), "inconsistentName 1");
  EXPECT_EQ(device.others.Size(), 3U);
}

TEST(ARowThatASetChanges, IsInUseForOthers) {
  Switch device;
  Phases first(device);
  Phases second(device);
  ASSERT_EQ(first.Test({{"5.1.1.1", Int(1)}}), "noError");
  EXPECT_EQ(second.Test({{"5.1.2.1", Int(1)}}), "resourceUnavailable 1");
  Phases third(device);
  EXPECT_EQ(third.Test({{"5.1.1.2", Int(5)}}), "noError");
  ASSERT_EQ(first.Commit(), "noError");
  ASSERT_EQ(third.Commit(), "noError");
  EXPECT_EQ(device.Speeds(), "INTEGER 1, INTEGER 5, INTEGER 10, INTEGER 10");
}

TEST(ARowThatSeveralRequestsOfASetChange, IsCheckedWithAllOfThem) {
  Switch device;
  device.ports.Check(
      [](const LineChange& change) { return change.after->speed != 50; });
  Phases set(device);
  EXPECT_EQ(set.Test({{"5.1.2.1", Int(5)}}), "noError");
  EXPECT_EQ(set.Test({{"6.1.1.1", Int(3)}, {"5.1.1.1", Int(50)}}),
            "inconsistentValue");
}

TEST(ASetInSeveralRequests, EndsWithTheFirstThatIsRefused) {
  Switch device;
  Phases set(device);
  EXPECT_EQ(set.Test({{"5.1.1.1", Int(1)}}), "noError");
  EXPECT_EQ(set.Test({{"5.1.2.1", Int(5)}, {"5.1.1.1", Octets("x")}}),
            "wrongType 2");
  EXPECT_EQ(set.Commit(), "commitFailed");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.1"}),
            "INTEGER 10, noSuchInstance");
}

TEST(ASetInSeveralRequests, BlamesNoVarbindOfTheFirstForAnothers) {
  Switch device;
  device.refused = 3;
  Phases set(device);
  EXPECT_EQ(set.Test({{"5.1.1.1", Int(1)}}), "noError");
  EXPECT_EQ(set.Test({{"5.1.1.3", Int(3)}}), "noError");
  EXPECT_EQ(set.Commit(), "commitFailed");
}

TEST(ARowThatTheApplicationChangesMeanwhile, IsNotOverwritten) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.1.1", Int(1)}}), "noError");
  device.ports.Change(1, [](Line& port) { port.vlan = 7; });
  EXPECT_EQ(phases.Commit(), "commitFailed 1");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.1"}), "INTEGER 10, INTEGER 7");
}

TEST(ARowThatTheApplicationChangesAfterCommitSet, StaysAsItMadeIt) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.1.1", Int(1)}, {"5.1.1.2", Int(2)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  device.ports.Change(1, [](Line& port) { port.speed = 77; });
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.Speeds(), "INTEGER 77, INTEGER 10, INTEGER 10, INTEGER 10");
}

TEST(ARowThatTheApplicationChangesAfterCommitSet, LosesWhatTheSetHasWritten) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.1.1", Int(1)}, {"5.1.4.1", Int(2)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  device.steps.clear();
  device.ports.Change(1, [](Line& port) { port.vlan = 7; });
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.1", "5.1.4.1"}),
            "INTEGER 10, INTEGER 7, INTEGER 1");
  EXPECT_EQ(device.steps, (Steps{"1: 1 to 10"}));
}

TEST(ARowThatTheApplicationChangesAfterCommitSet, GoesIfTheSetHasMadeIt) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.9", Int(4)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  device.ports.Change(9, [](Line& port) { port.vlan = 7; });
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_FALSE(device.ports.Contains(9));
}

TEST(ARowThatTheApplicationPutsAfterCommitSet, StaysAsItIs) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.1", Int(6)}, {"5.1.4.9", Int(4)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  ASSERT_TRUE(device.ports.Insert(1, {11, {}, {}}));
  device.ports.Set(9, {99, {}, {}});
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.1.9"}), "INTEGER 11, INTEGER 99");
}

TEST(ARowThatTheApplicationPutsAfterCommitSet, IsAsActiveAsItWas) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.1", Int(2)}, {"5.1.4.9", Int(5)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  device.ports.Set(1, {11, {}, {}});
  device.ports.Set(9, {99, {}, {}});
  EXPECT_EQ(device.GetAll({"5.1.4.1", "5.1.4.9"}), "INTEGER 2, INTEGER 2");
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.4.1", "5.1.4.9"}), "INTEGER 1, INTEGER 1");
}

TEST(ARowThatTheApplicationPutsAfterCommitSet, HasTheStatusThatItSays) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.1", Int(2)}, {"5.1.4.9", Int(4)}}), "noError");
  ASSERT_EQ(phases.Commit(), "noError");
  EXPECT_TRUE(device.ports.SetStatus(1, RowStatus::NotInService));
  EXPECT_TRUE(device.ports.SetStatus(9, RowStatus::NotInService));
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.1.4.1", "5.1.4.9"}), "INTEGER 2, INTEGER 2");
}

TEST(AnApplyThatChangesItsRow, LosesNothingButTheSetWhenItRefuses) {
  Device device;
  snmp::Module module(device.agent, kBase);
  snmp::Table<int, Line> table(module, "5");
  table.Column(1, &Line::speed, snmp::ReadWrite())
      .Column(2, &Line::vlan)
      .Apply([&](const LineChange& change) {
        table.Change(change.key, [](Line& line) { line.vlan = 7; });
        return SetError::GenErr;
      });
  table.Insert(1, {});
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(1)}}), "commitFailed 1");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.1"}), "INTEGER 10, INTEGER 7");
}

TEST(ARowThatTheApplicationErasesMeanwhile, IsNotMadeAgain) {
  Switch device;
  Phases before(device);
  ASSERT_EQ(before.Test({{"5.1.1.1", Int(1)}}), "noError");
  device.ports.Erase(1);
  EXPECT_EQ(before.Commit(), "commitFailed 1");
  Phases after(device);
  ASSERT_EQ(after.Test({{"5.1.1.2", Int(1)}}), "noError");
  ASSERT_EQ(after.Commit(), "noError");
  device.ports.Erase(2);
  EXPECT_EQ(after.Undo(), "noError");
  EXPECT_EQ(device.ports.Size(), 1U);
}

TEST(ARowThatTheApplicationAddsMeanwhile, IsNotReplaced) {
  Switch device;
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.4.9", Int(4)}}), "noError");
  ASSERT_TRUE(device.ports.Insert(9, {55, {}, {}}));
  EXPECT_EQ(phases.Commit(), "commitFailed 1");
  EXPECT_EQ(device.Get("5.1.1.9"), "INTEGER 55");
}

TEST(ADestroyOfNoRow, IsNotTold) {
  Switch device;
  EXPECT_EQ(device.Set({{"5.1.4.9", Int(6)}}), "noError");
  EXPECT_TRUE(device.steps.empty());
}

TEST(ATableThatGoes, EndsTheSetsOfItsRows) {
  Switch device;
  std::optional<snmp::Table<int, Line>> table;
  table.emplace(device.module, "8");
  table->Column(1, &Line::speed, snmp::ReadWrite());
  table->Insert(1, {});
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"8.1.1.1", Int(1)}}), "noError");
  table.reset();
  EXPECT_EQ(phases.Commit(), "commitFailed 1");
}

struct Comparable {
  int value = 0;
  bool operator==(const Comparable& other) const {
    return value == other.value;
  }
};

TEST(ABorrowedRow, IsNotOverwrittenWithAChangeOfTheApplicationsInIt) {
  Device device;
  snmp::Module module(device.agent, kBase);
  std::map<int, Comparable> rows{{1, {10}}, {2, {10}}};
  snmp::Table table(module, "5", rows);
  table.Column(1, &Comparable::value, snmp::ReadWrite());
  device.Connect();
  Phases phases(device);
  ASSERT_EQ(phases.Test({{"5.1.1.1", Int(1)}}), "noError");
  {
    const auto lock = device.agent.Lock();
    rows[1].value = 77;
  }
  EXPECT_EQ(phases.Commit(), "commitFailed 1");
  EXPECT_EQ(device.Set({{"5.1.1.2", Int(5)}}), "noError");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.1.2"}), "INTEGER 77, INTEGER 5");
}

TEST(ABorrowedRow, StaysAsTheApplicationMadeItBeforeARefusal) {
  Device device;
  snmp::Module module(device.agent, kBase);
  std::map<int, Comparable> rows{{1, {10}}};
  snmp::Table table(module, "5", rows);
  table.Column(1, &Comparable::value, snmp::ReadWrite())
      .Apply([&](const auto&) {
        rows[1].value = 77;
        return SetError::GenErr;
      });
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(1)}}), "commitFailed 1");
  EXPECT_EQ(device.Get("5.1.1.1"), "INTEGER 77");
}

TEST(ABorrowedRow, KeepsWhatTheApplicationMadeOfItsOtherCells) {
  Device device;
  snmp::Module module(device.agent, kBase);
  using Pair = std::tuple<int, int>;
  struct Row {
    int written = 10;
    int counted = 0;
    bool operator==(const Row& other) const {
      return Pair(written, counted) == Pair(other.written, other.counted);
    }
  };
  std::map<int, Row> rows{{1, {}}};
  snmp::Table table(module, "5", rows);
  table.Column(1, &Row::written, snmp::ReadWrite())
      .Column(2, &Row::counted)
      .Apply([&](const auto&) {
        ++rows[1].counted;
        return SetError::GenErr;
      });
  device.Connect();
  EXPECT_EQ(device.Set({{"5.1.1.1", Int(1)}}), "commitFailed 1");
  EXPECT_EQ(device.GetAll({"5.1.1.1", "5.1.2.1"}), "INTEGER 10, INTEGER 1");
}

TEST(ASetOfAnIndexColumn, SucceedsWithTheValueThatTheRowHas) {
  Device device;
  snmp::Module module(device.agent, kBase);
  snmp::Table<std::tuple<int, std::string>, Line> table(module, "7");
  table.Index<0>(1, snmp::ReadWrite().Range(1, 20))
      .Index<1>(2)
      .Column(3, &Line::speed, snmp::ReadWrite())
      .RowStatus(4);
  table.Insert({7, "a"}, {});
  device.Connect();
  const std::string row = ".7.1.97";
  EXPECT_EQ(device.Set({{"7.1.1" + row, Int(7)}, {"7.1.3" + row, Int(5)}}),
            "noError");
  EXPECT_EQ(device.Set({{"7.1.1" + row, Int(8)}}), "inconsistentValue 1");
  EXPECT_EQ(device.Set({{"7.1.1" + row, Int(21)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"7.1.1" + row, Octets("7")}}), "wrongType 1");
  EXPECT_EQ(device.Set({{"7.1.2" + row, Octets("a")}}), "notWritable 1");
  EXPECT_EQ(device.Set({{"7.1.1.9.1.97", Int(9)}, {"7.1.4.9.1.97", Int(4)}}),
            "noError");
  EXPECT_TRUE(table.Contains({9, "a"}));
}

TEST(ASetOfAnIndexColumn, MayNameAnAddress) {
  Device device;
  snmp::Module module(device.agent, kBase);
  snmp::Table<snmp::InetAddress, Line> table(module, "7");
  table.Index(1, snmp::ReadWrite());
  table.Insert(snmp::InetAddress("192.0.2.1"), {});
  device.Connect();
  const std::string cell = "7.1.1.1.4.192.0.2.1";
  EXPECT_EQ(device.Set({{cell, Octets(std::string("\xc0\0\2\1", 4))}}),
            "noError");
  EXPECT_EQ(device.Set({{cell, Octets(std::string("\xc0\0\2\2", 4))}}),
            "inconsistentValue 1");
}

}  // namespace
