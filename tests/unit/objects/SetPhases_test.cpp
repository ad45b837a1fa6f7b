// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs phase by phase: who is asked when, who refuses, and what is undone.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using snmp::SetError;

// Three scalars 1 to 3 in a module and one, ".8.1", in another, which write
// down what they are asked.
class ASetInPhases : public testing::Test {
 protected:
  using Values = std::vector<int>;

  void SetUp() override { device.Connect(2); }

  // Writes down what a scalar is asked; `allow` may refuse or throw.
  void Watch(snmp::Scalar<int>& scalar, const std::string& name) {
    scalar
        .Check([this, name](int before, int after) {
          return Note("check", name, before, after);
        })
        .Apply([this, name](int before, int after) {
          return Note("apply", name, before, after);
        })
        .Changed([this, name](int value) {
          calls += " changed:" + name + "=" + std::to_string(value);
          if (allow) allow("changed:" + name);
        });
  }

  SetError Note(const std::string& what, const std::string& name, int before,
                int after) {
    calls += " " + what + ":" + name + "=" + std::to_string(before) + ">" +
             std::to_string(after);
    return allow ? allow(what + ":" + name) : SetError::None;
  }

  // Refuses with `error` when that is asked.
  void Refuse(const std::string& what, SetError error) {
    const auto lock = device.agent.Lock();
    allow = [what, error](const std::string& asked) {
      return asked == what ? error : SetError::None;
    };
  }
  void Throw(const std::string& what) {
    const auto lock = device.agent.Lock();
    allow = [what](const std::string& asked) {
      if (asked == what) throw std::runtime_error("refused");
      return SetError::None;
    };
  }

  Values All() const { return {a.Get(), b.Get(), c.Get(), far.Get()}; }
  std::string TakeCalls() {
    const auto lock = device.agent.Lock();
    return std::exchange(calls, {});
  }

  const Assignments kAll{{"1.0", Int(11)},
                         {"2.0", Int(12)},
                         {".1.3.6.1.4.1.32473.8.1.0", Int(18)},
                         {"3.0", Int(13)}};
  const Values kBefore{1, 2, 3, 8};
  const Values kAfter{11, 12, 13, 18};

  std::function<SetError(const std::string&)> allow;
  std::string calls;
  Device device;
  snmp::Module module{device.agent, kBase};
  snmp::Module other{device.agent, "1.3.6.1.4.1.32473.8"};
  snmp::Scalar<int> a{module, "1", 1, snmp::ReadWrite()};
  snmp::Scalar<int> b{module, "2", 2, snmp::ReadWrite()};
  snmp::Scalar<int> c{module, "3", 3, snmp::ReadWrite()};
  snmp::Scalar<int> far{other, "1", 8, snmp::ReadWrite()};
};

class AWatchedSet : public ASetInPhases {
 protected:
  void SetUp() override {
    Watch(a, "a");
    Watch(b, "b");
    Watch(c, "c");
    Watch(far, "far");
    ASetInPhases::SetUp();
  }
};

TEST_F(AWatchedSet, AsksInTheOrderOfItsVarbinds) {
  Phases set(device);
  EXPECT_EQ(set.Test(kAll), "noError");
  EXPECT_EQ(TakeCalls(),
            " check:a=1>11 check:b=2>12 check:far=8>18 check:c=3>13");
  EXPECT_EQ(All(), kBefore);
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(TakeCalls(),
            " apply:a=1>11 apply:b=2>12 apply:far=8>18 apply:c=3>13");
  EXPECT_EQ(All(), kAfter);
  set.Cleanup();
  EXPECT_EQ(TakeCalls(),
            " changed:a=11 changed:b=12 changed:far=18 changed:c=13");
}

TEST_F(AWatchedSet, IsUndoneInReverseOrder) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  TakeCalls();
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(TakeCalls(),
            " apply:c=13>3 apply:far=18>8 apply:b=12>2 apply:a=11>1");
  EXPECT_EQ(All(), kBefore);
  set.Cleanup();
  EXPECT_EQ(TakeCalls(), "");
}

TEST_F(AWatchedSet, ShowsNothingBeforeItIsCommitted) {
  Phases set(device);
  set.Test(kAll);
  EXPECT_EQ(device.GetAll({"1.0", "2.0", "3.0"}),
            "INTEGER 1, INTEGER 2, INTEGER 3");
  set.Undo();
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, IsRefusedByACheckWithItsErrorAndPlace) {
  for (const SetError error :
       {SetError::GenErr, SetError::NoAccess, SetError::WrongValue,
        SetError::InconsistentValue, SetError::ResourceUnavailable,
        SetError::InconsistentName, SetError::NoCreation, SetError::NotWritable,
        SetError::WrongType, SetError::WrongLength, SetError::WrongEncoding}) {
    Refuse("check:b", error);
    Phases set(device);
    const wire::Response response = device.Master().Ask(
        wire::TestSet{{{Id("1.0"), Int(11)}, {Id("2.0"), Int(12)}}},
        set.Transaction());
    EXPECT_EQ(response.error, static_cast<std::uint16_t>(error));
    EXPECT_EQ(response.index, 2);
    set.Cleanup();
    EXPECT_EQ(All(), kBefore);
  }
  Refuse("", SetError::None);
  EXPECT_EQ(device.Set(kAll), "noError");
}

TEST_F(AWatchedSet, IsNeitherAppliedNorFinalWhenItIsRefused) {
  Refuse("check:c", SetError::InconsistentValue);
  EXPECT_EQ(device.Set(kAll), "inconsistentValue 4");
  EXPECT_EQ(TakeCalls(),
            " check:a=1>11 check:b=2>12 check:far=8>18 check:c=3>13");
}

TEST_F(AWatchedSet, IsUndoneWhenAnApplyRefuses) {
  Refuse("apply:far", SetError::ResourceUnavailable);
  Phases set(device);
  set.Test(kAll);
  TakeCalls();
  EXPECT_EQ(set.Commit(), "commitFailed 3");
  EXPECT_EQ(
      TakeCalls(),
      " apply:a=1>11 apply:b=2>12 apply:far=8>18 apply:b=12>2 apply:a=11>1");
  EXPECT_EQ(All(), kBefore);
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(TakeCalls(), "");
  Refuse("", SetError::None);
  EXPECT_EQ(device.Set(kAll), "noError");
}

TEST_F(AWatchedSet, FailsWithUndoFailedWhenAnApplyDoesNotTakeItBack) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  Refuse("apply:far", SetError::CommitFailed);
  TakeCalls();
  EXPECT_EQ(set.Undo(), "undoFailed");
  EXPECT_EQ(TakeCalls(),
            " apply:c=13>3 apply:far=18>8 apply:b=12>2 apply:a=11>1");
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, TellsTheFailedUndoOfAFailedCommit) {
  int applied = 0;
  {
    const auto lock = device.agent.Lock();
    allow = [&applied](const std::string& asked) {
      if (asked == "apply:c") return SetError::CommitFailed;
      return asked == "apply:b" && ++applied == 2 ? SetError::CommitFailed
                                                  : SetError::None;
    };
  }
  Phases set(device);
  set.Test(kAll);
  EXPECT_EQ(set.Commit(), "commitFailed 4");
  EXPECT_EQ(set.Undo(), "undoFailed");
  set.Cleanup();
  Refuse("", SetError::None);
  EXPECT_EQ(device.Set({{"1.0", Int(5)}}), "noError");
}

TEST_F(AWatchedSet, IsRefusedByWhatACheckThrows) {
  Throw("check:b");
  EXPECT_EQ(device.Set(kAll), "genErr 2");
  EXPECT_EQ(All(), kBefore);
  EXPECT_TRUE(device.HasLogged(
      "32473.7.2: a function of the application has thrown: refused"));
}

TEST_F(AWatchedSet, IsUndoneByWhatAnApplyThrows) {
  Throw("apply:b");
  EXPECT_EQ(device.Set(kAll), "commitFailed 2");
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, StaysWhateverAChangedThrows) {
  Throw("changed:b");
  EXPECT_EQ(device.Set(kAll), "noError");
  EXPECT_EQ(All(), kAfter);
  EXPECT_NE(TakeCalls().find("changed:c=13"), std::string::npos);
}

TEST_F(AWatchedSet, FailsToUndoWhenAnApplyThrows) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  Throw("apply:b");
  EXPECT_EQ(set.Undo(), "undoFailed");
  EXPECT_EQ(All(), kBefore);
}

// One TestSet for each registration, as Net-SNMP sends them.
TEST_F(AWatchedSet, MayComeInSeveralParts) {
  Phases set(device);
  EXPECT_EQ(set.Test({{"1.0", Int(11)}, {"2.0", Int(12)}}), "noError");
  EXPECT_EQ(set.Test({{".1.3.6.1.4.1.32473.8.1.0", Int(18)}}), "noError");
  EXPECT_EQ(All(), kBefore);
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(All(), (Values{11, 12, 3, 18}));
  set.Cleanup();
  set.Cleanup();
  EXPECT_EQ(TakeCalls(),
            " check:a=1>11 check:b=2>12 check:far=8>18 apply:a=1>11 "
            "apply:b=2>12 apply:far=8>18 changed:a=11 changed:b=12 "
            "changed:far=18");
}

TEST_F(AWatchedSet, IsUndoneOnceThoughItCameInSeveralParts) {
  Phases set(device);
  set.Test({{"1.0", Int(11)}});
  set.Test({{".1.3.6.1.4.1.32473.8.1.0", Int(18)}});
  set.Commit();
  set.Commit();
  TakeCalls();
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(TakeCalls(), " apply:far=18>8 apply:a=11>1");
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, IsRefusedAsAWholeWhenAPartIs) {
  Phases set(device);
  EXPECT_EQ(set.Test({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(set.Test({{".1.3.6.1.4.1.32473.8.1.0", Octets("x")}}),
            "wrongType 1");
  set.Cleanup();
  set.Cleanup();
  EXPECT_EQ(All(), kBefore);
  EXPECT_EQ(device.Set(kAll), "noError");
}

TEST_F(AWatchedSet, FailsWithAllItsPartsWhenOneCannotBeCommitted) {
  Refuse("apply:far", SetError::CommitFailed);
  Phases set(device);
  set.Test({{"1.0", Int(11)}});
  set.Test({{".1.3.6.1.4.1.32473.8.1.0", Int(18)}});
  EXPECT_EQ(set.Commit().substr(0, 12), "commitFailed");
  EXPECT_EQ(set.Commit().substr(0, 12), "commitFailed");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, IsTestedAgainWhenItsRequestComesAgain) {
  Phases set(device);
  EXPECT_EQ(set.Test(kAll), "noError");
  EXPECT_EQ(set.Test(kAll), "noError");
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(set.Commit(), "noError");
  set.Cleanup();
  set.Cleanup();
  EXPECT_EQ(All(), kAfter);
  EXPECT_EQ(TakeCalls(),
            " check:a=1>11 check:b=2>12 check:far=8>18 check:c=3>13"
            " apply:a=1>11 apply:b=2>12 apply:far=8>18 apply:c=3>13"
            " changed:a=11 changed:b=12 changed:far=18 changed:c=13");
}

TEST_F(AWatchedSet, MayNameAnObjectTwiceWithOneValue) {
  EXPECT_EQ(device.Set({{"1.0", Int(5)}, {"1.0", Int(5)}}), "noError");
  EXPECT_EQ(a.Get(), 5);
  EXPECT_EQ(device.Set({{"1.0", Int(6)}, {"1.0", Int(7)}}),
            "inconsistentValue 2");
  EXPECT_EQ(a.Get(), 5);
}

TEST_F(AWatchedSet, OverlapsNoOther) {
  Phases first(device);
  Phases second(device);
  EXPECT_EQ(first.Test({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(second.Test({{"2.0", Int(22)}, {"1.0", Int(21)}}),
            "resourceUnavailable 2");
  EXPECT_EQ(first.Commit(), "noError");
  EXPECT_EQ(second.Test({{"1.0", Int(21)}}), "resourceUnavailable 1");
  first.Cleanup();
  EXPECT_EQ(second.Test({{"1.0", Int(21)}}), "noError");
  EXPECT_EQ(second.Commit(), "noError");
  second.Cleanup();
  EXPECT_EQ(All(), (Values{21, 2, 3, 8}));
}

TEST_F(AWatchedSet, GoesOnBesideOneOfOtherObjects) {
  Phases first(device);
  Phases second(device);
  EXPECT_EQ(first.Test({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(second.Test({{"2.0", Int(22)}}), "noError");
  EXPECT_EQ(second.Commit(), "noError");
  EXPECT_EQ(first.Commit(), "noError");
  EXPECT_EQ(second.Undo(), "noError");
  first.Cleanup();
  EXPECT_EQ(All(), (Values{11, 2, 3, 8}));
}

TEST_F(AWatchedSet, AnswersPhasesOfNoTransaction) {
  Phases none(device);
  EXPECT_EQ(none.Commit(), "commitFailed");
  EXPECT_EQ(none.Undo(), "noError");
  none.Cleanup();
  EXPECT_EQ(TakeCalls(), "");
}

TEST_F(AWatchedSet, AnswersPhasesOutOfOrder) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  EXPECT_EQ(set.Test({{"1.0", Int(99)}}), "genErr");
  set.Cleanup();
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(set.Commit(), "commitFailed");
  EXPECT_EQ(All(), kAfter);
}

TEST_F(AWatchedSet, IsServedPhaseByPhaseWhenAllArriveTogether) {
  Phases set(device);
  std::vector<std::uint32_t> sent;
  {
    const auto lock = device.agent.Lock();  // nothing is read meanwhile
    sent = {set.SendTest(kAll), set.SendCommit(), set.SendCommit(),
            set.SendUndo(), set.SendUndo()};
  }
  for (const std::uint32_t request : sent) {
    EXPECT_EQ(device.Receive(request), "noError");
  }
  EXPECT_EQ(All(), kBefore);
}

TEST_F(AWatchedSet, IsUndoneWhenTheConnectionIsLostBetweenPhases) {
  for (int phases = 0; phases < 3; ++phases) {
    Phases set(device);
    set.Test(kAll);
    if (phases >= 1) set.Commit();
    if (phases >= 2) set.Undo();
    TakeCalls();
    device.Lose();
    device.Accept(2);
    device.Sync();
    EXPECT_EQ(All(), kBefore) << phases;
    EXPECT_EQ(TakeCalls(), phases == 1
                               ? " apply:c=13>3 apply:far=18>8 apply:b=12>2 "
                                 "apply:a=11>1"
                               : "");
    EXPECT_EQ(device.Set({{"1.0", Int(1)}}), "noError") << phases;
    TakeCalls();
  }
}

TEST_F(AWatchedSet, StaysWhenTheConnectionIsLostBehindIt) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  set.Cleanup();
  device.Lose();
  device.Accept(2);
  EXPECT_EQ(All(), kAfter);
}

TEST_F(AWatchedSet, IsUndoneWhenTheAgentIsStopped) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  TakeCalls();
  device.agent.Stop();
  EXPECT_EQ(TakeCalls(),
            " apply:c=13>3 apply:far=18>8 apply:b=12>2 apply:a=11>1");
  EXPECT_EQ(All(), kBefore);
  device.Connect(2);
  EXPECT_EQ(set.Commit(), "commitFailed");
  EXPECT_EQ(device.Set(kAll), "noError");
}

TEST_F(AWatchedSet, IsUndoneWhenTheAgentIsStoppedWithin) {
  for (const char* where : {"check:b", "apply:b"}) {
    {
      const auto lock = device.agent.Lock();
      allow = [this, where](const std::string& asked) {
        if (asked == where) {
          allow = {};
          device.agent.Stop();
        }
        return SetError::None;
      };
    }
    Phases set(device);
    device.Master().Send(
        wire::TestSet{{{Id("1.0"), Int(11)}, {Id("2.0"), Int(12)}}},
        set.Transaction());
    set.SendCommit();
    EXPECT_TRUE(Eventually([&] { return !device.agent.Connected(); }));
    EXPECT_EQ(All(), kBefore) << where;
    device.Connect(2);
    EXPECT_EQ(device.Set({{"1.0", Int(1)}, {"2.0", Int(2)}}), "noError");
  }
}

TEST_F(AWatchedSet, FailsWhenAnObjectIsGoneBeforeItIsCommitted) {
  Phases set(device);
  set.Test(kAll);
  { const snmp::Scalar<int> gone(std::move(b)); }
  EXPECT_EQ(set.Commit(), "commitFailed 2");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(a.Get(), 1);
  EXPECT_EQ(c.Get(), 3);
  EXPECT_EQ(TakeCalls().find("apply:b"), std::string::npos);
}

TEST_F(AWatchedSet, IsUndoneAroundAnObjectThatIsGone) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  { const snmp::Scalar<int> gone(std::move(b)); }
  TakeCalls();
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(TakeCalls(), " apply:c=13>3 apply:far=18>8 apply:a=11>1");
}

TEST_F(AWatchedSet, EndsAroundAnObjectThatIsGone) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  { const snmp::Scalar<int> gone(std::move(b)); }
  TakeCalls();
  set.Cleanup();
  EXPECT_EQ(TakeCalls(), " changed:a=11 changed:far=18 changed:c=13");
}

TEST_F(AWatchedSet, FailsWhenAModuleIsGone) {
  Phases set(device);
  set.Test(kAll);
  { const snmp::Module gone(std::move(other)); }
  EXPECT_EQ(set.Commit(), "commitFailed 3");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(a.Get(), 1);
  EXPECT_EQ(far.Get(), 8);
}

// An object that a function of its own, or of another, destroys.
TEST_F(AWatchedSet, OutlivesObjectsThatItsFunctionsDestroy) {
  for (const char* where :
       {"check:a", "check:b", "apply:a", "apply:b", "changed:a", "changed:b"}) {
    auto doomed =
        std::make_unique<snmp::Scalar<int>>(module, "5", 5, snmp::ReadWrite());
    Watch(*doomed, std::string(where).back() == 'a' ? "a" : "b");
    {
      const auto lock = device.agent.Lock();
      allow = [where, &doomed](const std::string& asked) {
        if (asked == where) {
          doomed.reset();
        }
        return SetError::None;
      };
    }
    const Assignment own{"5.0", Int(6)};
    Assignments set{own, {"2.0", Int(2)}};
    if (std::string(where).back() == 'b') set = {{"1.0", Int(1)}, own};
    const std::string result = device.Set(set);
    if (std::string(where).substr(0, 5) == "check") {
      EXPECT_EQ(result.substr(0, 12), "commitFailed") << where;
    } else {
      EXPECT_EQ(result, "noError") << where;
    }
    EXPECT_EQ(doomed, nullptr) << where;
    EXPECT_EQ(device.Get("5.0"), "noSuchObject") << where;
    Refuse("", SetError::None);
  }
}

TEST_F(ASetInPhases, TouchesNothingOfAScalarThatItsSetterDestroys) {
  std::unique_ptr<snmp::Scalar<int>> doomed;
  bool applied = false;
  doomed = std::make_unique<snmp::Scalar<int>>(
      module, "5", snmp::GetSet([] { return 5; }, [&](int) { doomed.reset(); }),
      snmp::ReadWrite());
  doomed->Apply([&](int) { applied = true; });
  EXPECT_EQ(device.Set({{"5.0", Int(6)}}), "noError");
  EXPECT_FALSE(applied);
  EXPECT_EQ(device.Get("5.0"), "noSuchObject");
}

TEST_F(ASetInPhases, OutlivesAScalarThatItsGetterDestroys) {
  std::unique_ptr<snmp::Scalar<int>> doomed;
  doomed = std::make_unique<snmp::Scalar<int>>(module, "5",
                                               snmp::GetSet(
                                                   [&] {
                                                     doomed.reset();
                                                     return 5;
                                                   },
                                                   [](int) {}),
                                               snmp::ReadWrite());
  EXPECT_EQ(device.Set({{"1.0", Int(11)}, {"5.0", Int(6)}}).substr(0, 12),
            "commitFailed");
  EXPECT_EQ(a.Get(), 1);
}

TEST_F(AWatchedSet, SeesWhatTheApplicationHasChangedSince) {
  Phases set(device);
  set.Test({{"1.0", Int(11)}});
  a.Set(5);
  TakeCalls();
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(TakeCalls(), " check:a=5>11 apply:a=5>11");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(a.Get(), 5);
}

TEST_F(AWatchedSet, FailsWhenWhatHasChangedSinceForbidsIt) {
  Phases set(device);
  set.Test({{"2.0", Int(12)}, {"1.0", Int(11)}});
  a.Set(5);
  Refuse("check:a", SetError::InconsistentValue);
  EXPECT_EQ(set.Commit(), "commitFailed 2");
  EXPECT_EQ(a.Get(), 5);
  EXPECT_EQ(b.Get(), 2);
}

TEST_F(AWatchedSet, DoesNotUndoWhatTheApplicationHasChangedSince) {
  Phases set(device);
  set.Test(kAll);
  set.Commit();
  b.Set(55);
  TakeCalls();
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(All(), (Values{1, 55, 3, 8}));
  EXPECT_EQ(TakeCalls(), " apply:c=13>3 apply:far=18>8 apply:a=11>1");
}

TEST_F(ASetInPhases, HasASetterUndoWhateverItMadeOfTheValue) {
  int stored = 50;
  std::string set;
  const snmp::Scalar tens(module, "5",
                          snmp::GetSet([&] { return stored; },
                                       [&](int value) {
                                         stored = value / 10 * 10;
                                         set += " " + std::to_string(value);
                                       }),
                          snmp::ReadWrite());
  Phases phases(device);
  EXPECT_EQ(phases.Test({{"5.0", Int(77)}}), "noError");
  EXPECT_EQ(phases.Commit(), "noError");
  EXPECT_EQ(device.Get("5.0"), "INTEGER 70");
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.Get("5.0"), "INTEGER 50");
  EXPECT_EQ(set, " 77 50");
}

TEST_F(ASetInPhases, HasASetterUndoWhateverTheGetterSays) {
  int fan = 1;
  int tray = 1;
  const snmp::Scalar speed(module, "5",
                           snmp::GetSet(
                               [&]() -> std::optional<int> {
                                 if (fan == 0) return std::nullopt;
                                 return fan;
                               },
                               [&](int value) { fan = value; }),
                           snmp::ReadWrite());
  const snmp::Scalar level(module, "6",
                           snmp::GetSet(
                               [&] {
                                 if (tray == 0) throw std::runtime_error("out");
                                 return tray;
                               },
                               [&](int value) { tray = value; }),
                           snmp::ReadWrite());
  Phases phases(device);
  EXPECT_EQ(phases.Test({{"5.0", Int(0)}, {"6.0", Int(0)}}), "noError");
  EXPECT_EQ(phases.Commit(), "noError");
  EXPECT_EQ(phases.Undo(), "noError");
  EXPECT_EQ(device.GetAll({"5.0", "6.0"}), "INTEGER 1, INTEGER 1");
}

TEST_F(ASetInPhases, OfATestAndIncrFailsWhenTheApplicationCountsOn) {
  snmp::Scalar spin(module, "5", snmp::TestAndIncr{7}, snmp::ReadWrite());
  Phases set(device);
  EXPECT_EQ(set.Test({{"5.0", Int(7)}}), "noError");
  spin.Set({8});
  EXPECT_EQ(set.Commit(), "commitFailed 1");
  EXPECT_EQ(spin.Get().value, 8);
}

TEST_F(ASetInPhases, UndoesANumberThatIsNone) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  snmp::Scalar number(module, "5", 1.5, snmp::ReadWrite());
  const wire::Value value{wire::Type::kOpaque,
                          std::string("\x9f\x79\x8\x7f\xf8\0\0\0\0\0\0", 11)};
  Phases set(device);
  EXPECT_EQ(set.Test({{"5.0", value}}), "noError");
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_NE(number.Get(), number.Get());
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(number.Get(), 1.5);
  number.Set(none);
  EXPECT_EQ(device.Set({{"5.0", value}}), "noError");
}

TEST_F(ASetInPhases, IsCheckedAsAWholeByItsModules) {
  int asked = 0;
  module.Check([&](const snmp::SetChange& change) {
    ++asked;
    EXPECT_FALSE(change.Names(c));
    return change.After(a) < change.After(b) ? SetError::None
                                             : SetError::InconsistentValue;
  });
  EXPECT_EQ(device.Set({{"1.0", Int(20)}, {"2.0", Int(30)}}), "noError");
  EXPECT_EQ(device.Set({{"2.0", Int(50)}, {"1.0", Int(40)}}), "noError");
  EXPECT_EQ(device.Set({{"1.0", Int(60)}}), "inconsistentValue 1");
  EXPECT_EQ(
      device.Set({{".1.3.6.1.4.1.32473.8.1.0", Int(5)}, {"2.0", Int(10)}}),
      "inconsistentValue 2");
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(device.Set({{".1.3.6.1.4.1.32473.8.1.0", Int(5)}}), "noError");
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(All(), (Values{40, 50, 3, 5}));
}

TEST_F(ASetInPhases, IsRefusedByWhatTheCheckOfAModuleThrows) {
  module.Check([](const snmp::SetChange&) -> SetError {
    throw std::runtime_error("no");
  });
  EXPECT_EQ(device.Set(kAll), "genErr 1");
  EXPECT_TRUE(device.HasLogged("1.3.6.1.4.1.32473.7: a function"));
}

TEST_F(ASetInPhases, SeesThePartsBeforeInTheChecksOfModules) {
  other.Check([&](const snmp::SetChange& change) {
    EXPECT_TRUE(change.Names(a));
    return change.After(a) == 11 ? SetError::None : SetError::GenErr;
  });
  Phases set(device);
  EXPECT_EQ(set.Test({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(set.Test({{".1.3.6.1.4.1.32473.8.1.0", Int(18)}}), "noError");
  set.Undo();
}

TEST_F(ASetInPhases, TakesFunctionsOfEveryForm) {
  snmp::Scalar<int> d(module, "4", 4, snmp::ReadWrite());
  snmp::Scalar<int> e(module, "5", 5, snmp::ReadWrite());
  snmp::Scalar<int> f(
      module, "6",
      snmp::GetSet([] { return 6; }, [](int value) { return value < 10; }),
      snmp::ReadWrite());
  snmp::Scalar<int> g(module, "7",
                      snmp::GetSet([] { return 7; },
                                   [](int value) {
                                     return value < 10 ? SetError::None
                                                       : SetError::WrongValue;
                                   }),
                      snmp::ReadWrite());
  std::string seen;
  d.Check([](int after) {
     return after == 40 ? SetError::None : SetError::WrongValue;
   }).Apply([&](int after) { seen += std::to_string(after); });
  e.Apply([](int after) { return after == 50; });
  EXPECT_EQ(device.Set({{"4.0", Int(41)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"4.0", Int(40)}, {"5.0", Int(51)}}), "commitFailed 2");
  EXPECT_EQ(seen, "404");
  EXPECT_EQ(device.Set({{"4.0", Int(40)}, {"5.0", Int(50)}}), "noError");
  EXPECT_EQ(device.Set({{"6.0", Int(9)}, {"7.0", Int(9)}}), "noError");
  EXPECT_EQ(device.Set({{"6.0", Int(10)}}), "commitFailed 1");
  EXPECT_EQ(device.Set({{"7.0", Int(10)}}), "commitFailed 1");
}

TEST_F(ASetInPhases, IsRestoredWhenASetterThrows) {
  std::string stored;
  snmp::Scalar<int> d(module, "4",
                      snmp::GetSet([] { return 4; },
                                   [&](int value) {
                                     stored += " " + std::to_string(value);
                                     if (value == 9) throw 9;
                                   }),
                      snmp::ReadWrite());
  EXPECT_EQ(device.Set({{"1.0", Int(11)}, {"4.0", Int(9)}, {"2.0", Int(12)}}),
            "commitFailed 2");
  EXPECT_EQ(stored, " 9 4");
  EXPECT_EQ(All(), kBefore);
}

TEST_F(ASetInPhases, MayCallTheAgentFromItsFunctions) {
  a.Changed([&](int value) {
    b.Set(value);
    snmp::Notification(module, "0.1").Send({a, b});
    device.agent.Dispatch();
  });
  EXPECT_EQ(device.Set({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(b.Get(), 11);
  EXPECT_EQ(device.Master().TakeNotifications().size(), 1U);
}

TEST_F(ASetInPhases, ReplacesFunctionsThatAreRunning) {
  std::string seen;
  a.Apply([&](int) {
    seen += "first ";
    a.Apply([&](int) { seen += "second "; });
  });
  EXPECT_EQ(device.Set({{"1.0", Int(11)}}), "noError");
  EXPECT_EQ(device.Set({{"1.0", Int(12)}}), "noError");
  EXPECT_EQ(seen, "first second ");
}

}  // namespace
