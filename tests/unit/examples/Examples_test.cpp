// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the examples of the objects do for managers, without snmpd.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <snmpsubagent/testing.h>

#include <chrono>
#include <fstream>
#include <string>

#include "objects_event_loop/Goal.h"
#include "objects_later/SlowDevice.h"
#include "objects_loaded_table/Files.h"
#include "objects_rowstatus/Users.h"
#include "objects_table/Pumps.h"
#include "testkit/ScratchDirectory.h"

namespace {

using namespace std::chrono_literals;
using snmp::testing::ErrorStatus;
using snmp::testing::Varbind;
using testing::ElementsAre;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

const std::string kExamples = "1.3.6.1.4.1.32473.3";

// Virtual time, a master agent, and an agent that a test's service gets.
class Example : public testing::Test {
 protected:
  snmp::testing::Clock clock_;
  snmp::testing::Master master_;
  snmp::Agent agent_{"example", {master_.Address()}};
};

class TheTableExample : public Example {
 protected:
  TheTableExample() {
    pumps_.Install("feed", {120, PumpState::On});
    pumps_.Install("drain", {80, PumpState::Off});
    master_.WaitForRegistrations(1);
  }

  const std::string entry_ = kExamples + ".24.1.1";
  const std::string feed_ = ".4.102.101.101.100";
  Pumps pumps_{agent_};
  snmp::testing::Loop loop_{agent_};
};

TEST_F(TheTableExample, ShowsThePumpsByTheirNames) {
  const std::string drain = ".5.100.114.97.105.110";
  EXPECT_THAT(master_.Walk(kExamples + ".24"),
              ElementsAre(Varbind{entry_ + ".2" + feed_, 120},
                          Varbind{entry_ + ".2" + drain, 80},
                          Varbind{entry_ + ".3" + feed_, PumpState::On},
                          Varbind{entry_ + ".3" + drain, PumpState::Off}));
}

TEST_F(TheTableExample, SwitchesAPump) {
  CaptureStdout();
  EXPECT_EQ(master_.Set(entry_ + ".3" + feed_, PumpState::Off),
            ErrorStatus::NoError);
  EXPECT_EQ(GetCapturedStdout(), "feed is off\n");
  EXPECT_EQ(master_.Set(entry_ + ".3" + feed_, 3), ErrorStatus::WrongValue);
}

class TheLoadedTableExample : public Example {
 protected:
  TheLoadedTableExample() {
    folder_.Write("a", "12345");
    master_.WaitForRegistrations(1);
  }

  std::size_t Rows() { return master_.Walk(kExamples + ".25").size(); }

  testkit::ScratchDirectory folder_;
  Files files_{agent_, folder_.Path()};
  snmp::testing::Loop loop_{agent_};
};

TEST_F(TheLoadedTableExample, ShowsTheSizesOfFiles) {
  EXPECT_EQ(master_.Get(kExamples + ".25.1.1.2.1.97"), snmp::Counter64{5});
}

TEST_F(TheLoadedTableExample, ReadsTheFolderAgainAfterTenSeconds) {
  EXPECT_EQ(Rows(), 1U);
  folder_.Write("b", "");
  clock_.Advance(9s);
  EXPECT_EQ(Rows(), 1U);
  clock_.Advance(1s);
  EXPECT_EQ(Rows(), 2U);
}

class TheRowStatusExample : public Example {
 protected:
  TheRowStatusExample() { master_.WaitForRegistrations(1); }

  static snmp::Oid Cell(int column) {
    return kExamples + ".26.1.1." + std::to_string(column) + ".3.97.110.110";
  }
  ErrorStatus Create(const std::string& shell) {
    return master_
        .Set({{Cell(2), shell}, {Cell(4), snmp::RowStatus::CreateAndGo}})
        .error;
  }

  Users users_{agent_};
  snmp::testing::Loop loop_{agent_};
};

TEST_F(TheRowStatusExample, LetsManagersMakeAndDestroyUsers) {
  CaptureStdout();
  EXPECT_EQ(Create("/bin/bash"), ErrorStatus::NoError);
  EXPECT_EQ(master_.Get(Cell(3)), 1000U);
  EXPECT_EQ(master_.Set(Cell(4), snmp::RowStatus::Destroy),
            ErrorStatus::NoError);
  EXPECT_EQ(master_.Get(Cell(3)), snmp::ValueType::NoSuchInstance);
  EXPECT_EQ(GetCapturedStdout(), "ann may log in\nann is locked out\n");
}

TEST_F(TheRowStatusExample, RefusesAShellThatIsNoPath) {
  EXPECT_EQ(Create("bash"), ErrorStatus::InconsistentValue);
  EXPECT_EQ(master_.Walk(kExamples + ".26").size(), 3U);  // root
}

class TheLaterExample : public Example {
 protected:
  TheLaterExample() {
    agent_.Start();
    master_.WaitForRegistrations(1);
  }

  SlowDevice device_{agent_, 1ms};
};

TEST_F(TheLaterExample, AnswersWhenItCan) {
  EXPECT_EQ(master_.Get(kExamples + ".23.1.0"), 1013);
  EXPECT_EQ(master_.Set(kExamples + ".23.2.0", 50), ErrorStatus::NoError);
  EXPECT_EQ(master_.Get(kExamples + ".23.2.0"), 50);
}

TEST_F(TheLaterExample, AnswersOtherRequestsMeanwhile) {
  auto valve = master_.StartSet({{kExamples + ".23.2.0", 50}});
  EXPECT_EQ(master_.Get(kExamples + ".23.3.0"), "boiler room");
  EXPECT_TRUE(valve.Result().Succeeded());
}

class TheEventLoopExample : public Example {
 protected:
  TheEventLoopExample() {
    kit_.Watch(loop_.Descriptor(), [this] { loop_.RunOnce(); });
    CaptureStdout();
    master_.WaitForRegistrations(1);
  }
  ~TheEventLoopExample() override {
    agent_.Stop();
    EXPECT_EQ(GetCapturedStdout(),
              "connected\n" + expected_ + "not connected\n");
  }

  ::Loop loop_;
  Goal goal_{agent_, loop_};
  snmp::testing::Loop kit_;
  std::string expected_;
};

TEST_F(TheEventLoopExample, ShowsWhatTheLoopCounts) {
  goal_.SecondsHavePassed(3);
  EXPECT_EQ(master_.Get(kExamples + ".21.1.0"), 3);
}

TEST_F(TheEventLoopExample, TakesAGoal) {
  EXPECT_EQ(master_.Set(kExamples + ".21.2.0", 30), ErrorStatus::NoError);
  EXPECT_EQ(master_.Set(kExamples + ".21.2.0", 101), ErrorStatus::WrongValue);
  expected_ = "the goal is 30\n";
}

}  // namespace
