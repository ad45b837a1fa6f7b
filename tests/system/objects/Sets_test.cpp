// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs of several objects, modules and subagents at one snmpd, and SETs that
// take their time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Served.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Master.h"

using snmp::ReadWrite;
using snmp::SetError;
using testing::AnyOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

namespace {

// A module with an integer whose steps of a SET are noted.
class Noted {
 public:
  Noted(snmp::Agent& agent, const std::string& subtree, Lines& steps)
      : module_(agent, subtree),
        scalar_(module_, "1", 1, ReadWrite()),
        name_("." + subtree + ".1.0") {
    const std::string last = subtree.substr(subtree.rfind('.') + 1);
    scalar_.Apply([this, last, &steps](int before, int after) {
      steps.Add(last + " " + std::to_string(before) + " to " +
                std::to_string(after));
      return accepts_.load();
    });
    scalar_.Changed([last, &steps](int) { steps.Add(last + " is final"); });
  }

  void Refuse() { accepts_ = false; }
  snmp::Module& Module() { return module_; }
  snmp::Scalar<int>& Scalar() { return scalar_; }
  const std::string& Name() const { return name_; }

 private:
  std::atomic<bool> accepts_{true};
  snmp::Module module_;
  snmp::Scalar<int> scalar_;
  std::string name_;
};

class ASetOfTwoModules : public testing::Test {
 protected:
  ASetOfTwoModules() { agent_.Start(); }
  void SetUp() override {
    ASSERT_TRUE(WaitUntilRegistered(first_.Module()));
    ASSERT_TRUE(WaitUntilRegistered(second_.Module()));
  }
  std::string Set(const std::string& first, const std::string& second) {
    return SetAt(master_.Manager(),
                 {first_.Name(), "i", first, second_.Name(), "i", second});
  }

  Lines steps_;
  testkit::MasterAgent master_;
  snmp::Agent agent_{"the tests", OptionsFor(AddressOf(master_))};
  Noted first_{agent_, "1.3.6.1.4.1.32473.9.1", steps_};
  Noted second_{agent_, "1.3.6.1.4.1.32473.9.2", steps_};
};

TEST_F(ASetOfTwoModules, IsAppliedInTurnAndThenFinal) {
  EXPECT_EQ(Set("5", "6"), "None");
  EXPECT_EQ(first_.Scalar().Get(), 5);
  EXPECT_EQ(second_.Scalar().Get(), 6);
  EXPECT_TRUE(steps_.WaitFor("2 is final"));
  EXPECT_THAT(steps_.All(),
              ElementsAre("1 1 to 5", "2 1 to 6", "1 is final", "2 is final"));
}

TEST_F(ASetOfTwoModules, IsUndoneWhereItWasAppliedWhenTheOtherRefuses) {
  second_.Refuse();
  EXPECT_EQ(Set("5", "6"), "commitFailed " + second_.Name());
  EXPECT_TRUE(steps_.WaitFor("1 5 to 1"));
  EXPECT_EQ(first_.Scalar().Get(), 1);
  EXPECT_EQ(second_.Scalar().Get(), 1);
  EXPECT_THAT(steps_.All(), ElementsAre("1 1 to 5", "2 1 to 6", "1 5 to 1"));
}

TEST_F(ASetOfTwoModules, IsRefusedByACheckThatSeesBoth) {
  second_.Module().Check([this](const snmp::SetChange& change) {
    return change.Names(first_.Scalar()) && change.After(first_.Scalar()) >=
                                                change.After(second_.Scalar())
               ? SetError::InconsistentValue
               : SetError::None;
  });
  EXPECT_THAT(Set("6", "6"), StartsWith("inconsistentValue"));
  EXPECT_THAT(steps_.All(), ElementsAre());
  EXPECT_EQ(Set("5", "6"), "None");
}

// Two subagents, each with a session of its own, at one snmpd.
class ASetOfTwoSubagents : public testing::Test {
 protected:
  void SetUp() override {
    one_.Start();
    other_.Start();
    ASSERT_TRUE(WaitUntilRegistered(first_.Module()));
    ASSERT_TRUE(WaitUntilRegistered(second_.Module()));
  }
  std::string Set() {
    return SetAt(master_.Manager(),
                 {first_.Name(), "i", "5", second_.Name(), "i", "6"});
  }
  bool BothAreAsBefore() {
    return testkit::WaitFor(
        [this] {
          return first_.Scalar().Get() == 1 && second_.Scalar().Get() == 1;
        },
        testkit::Deadlines::Session());
  }

  Lines steps_;
  testkit::MasterAgent master_;
  snmp::Agent one_{"one", OptionsFor(AddressOf(master_))};
  snmp::Agent other_{"other", OptionsFor(AddressOf(master_))};
  Noted first_{one_, "1.3.6.1.4.1.32473.9.1", steps_};
  Noted second_{other_, "1.3.6.1.4.1.32473.9.2", steps_};
};

TEST_F(ASetOfTwoSubagents, ChangesBoth) {
  EXPECT_EQ(Set(), "None");
  EXPECT_EQ(first_.Scalar().Get(), 5);
  EXPECT_EQ(second_.Scalar().Get(), 6);
  EXPECT_TRUE(steps_.WaitFor("1 is final"));
  EXPECT_TRUE(steps_.WaitFor("2 is final"));
}

TEST_F(ASetOfTwoSubagents, ChangesNoneWhenTheOtherRefusesToTestIt) {
  second_.Scalar().Check([](int) { return SetError::InconsistentValue; });
  EXPECT_EQ(Set(), "inconsistentValue " + second_.Name());
  EXPECT_TRUE(BothAreAsBefore());
  EXPECT_THAT(steps_.All(), ElementsAre());
}

TEST_F(ASetOfTwoSubagents, ChangesNoneWhenTheFirstRefusesToTestIt) {
  first_.Scalar().Check([](int) { return SetError::WrongValue; });
  EXPECT_EQ(Set(), "wrongValue " + first_.Name());
  EXPECT_TRUE(BothAreAsBefore());
  EXPECT_THAT(steps_.All(), ElementsAre());
}

TEST_F(ASetOfTwoSubagents, IsUndoneWhenTheOtherRefusesToCommitIt) {
  second_.Refuse();
  EXPECT_EQ(Set(), "commitFailed " + second_.Name());
  EXPECT_TRUE(BothAreAsBefore());
}

TEST_F(ASetOfTwoSubagents, IsUndoneWhenTheFirstRefusesToCommitIt) {
  first_.Refuse();
  EXPECT_EQ(Set(), "commitFailed " + first_.Name());
  EXPECT_TRUE(BothAreAsBefore());
}

TEST_F(ASetOfTwoSubagents, IsUndoneWhenTheOtherGoesWhileItCommits) {
  std::optional<snmp::Later<SetError>> reply;
  std::mutex mutex;
  second_.Scalar().Apply(
      [&](int, int, const snmp::Later<SetError>& answerLater) {
        const std::lock_guard lock(mutex);
        reply.emplace(answerLater);
      });
  const auto set = master_.Manager().StartSet(
      {first_.Name(), "i", "5", second_.Name(), "i", "6"});
  ASSERT_TRUE(testkit::WaitFor(
      [&] {
        const std::lock_guard lock(mutex);
        return reply.has_value();
      },
      testkit::Deadlines::Session()));
  other_.Stop();
  EXPECT_FALSE(set->Result().Succeeded());
  EXPECT_TRUE(BothAreAsBefore());
}

// An object whose SET is answered when the test says so.
class Slow {
 public:
  explicit Slow(snmp::Module& module) : scalar_(module, "1", 1, ReadWrite()) {
    scalar_.Apply([this](int, int, const snmp::Later<SetError>& reply) {
      const std::lock_guard lock(mutex_);
      begun_ = std::chrono::steady_clock::now();
      reply_.emplace(reply);
    });
  }

  // Waits until the SET is being applied; returns whether it came to that.
  bool WaitUntilAsked() {
    return testkit::WaitFor(
        [this] {
          const std::lock_guard lock(mutex_);
          return reply_.has_value();
        },
        testkit::Deadlines::Session());
  }

  // Once it has taken so long.
  void AnswerAfter(std::chrono::milliseconds time) {
    const auto [begun, reply] = TakeReply();
    std::this_thread::sleep_until(begun + time);
    reply.Answer(SetError::None);
  }

 private:
  // Not answered under the mutex, for which the agent waits under its own lock.
  std::pair<std::chrono::steady_clock::time_point, snmp::Later<SetError>>
  TakeReply() {
    const std::lock_guard lock(mutex_);
    auto reply = *std::move(reply_);
    reply_.reset();
    return {begun_, std::move(reply)};
  }

  std::mutex mutex_;
  std::chrono::steady_clock::time_point begun_;
  std::optional<snmp::Later<SetError>> reply_;
  snmp::Scalar<int> scalar_;
};

TEST(ASlowSet, SucceedsAfterThreeSeconds) {
  Served served;
  Slow slow(served.module);
  served.Start();
  const auto set =
      served.master.Manager().StartSet({Served::Name("1"), "i", "2"});
  ASSERT_TRUE(slow.WaitUntilAsked());
  slow.AnswerAfter(std::chrono::seconds(3));
  EXPECT_THAT(set->Result().out, EndsWith("INTEGER: 2\n"));
  EXPECT_EQ(served.Shown("1"), "INTEGER: 2");
}

TEST(ASlowSet, IsRefusedInTimeByAnAgentThatNobodyAnswers) {
  Served served;
  Slow slow(served.module);
  served.Start();
  EXPECT_EQ(served.Set({Served::Name("1"), "i", "2"}),
            "commitFailed " + Served::Name("1"));
  EXPECT_EQ(served.Shown("1"), "INTEGER: 1");
}

TEST(ASlowSet, HoldsUpNoGet) {
  using namespace testkit::agentx;
  Master master;
  snmp::Agent agent("the tests", OptionsFor(AddressOf(master.Port())));
  snmp::Module module(agent, Served::kSubtree);
  Slow slow(module);
  const snmp::Scalar other(module, "2", 7);
  agent.Start();
  const Master::Session session = master.AcceptServing(1);
  const Oid slowName{1, 3, 6, 1, 4, 1, 32473, 9, 1, 0};
  const Oid otherName{1, 3, 6, 1, 4, 1, 32473, 9, 2, 0};
  const std::uint32_t transaction = session->NewTransaction();
  const TestSet test{{{slowName, {Type::kInteger, 2}}}};
  ASSERT_EQ(session->Ask(test, transaction).error, 0);
  const std::uint32_t commit = session->Send(CommitSet{}, transaction);
  ASSERT_TRUE(slow.WaitUntilAsked());
  for (int i = 0; i < 100; ++i) {
    const Response response = session->Ask(Get{{{otherName, false, {}}}});
    ASSERT_THAT(response.varbinds,
                ElementsAre(Varbind{otherName, {Type::kInteger, 7}}));
  }
  slow.AnswerAfter({});
  const Pdu committed = session->Receive();
  EXPECT_EQ(committed.header.packetId, commit);
  EXPECT_EQ(std::get<Response>(committed.body).error, 0);
}

TEST(ASlowGet, HoldsUpNoOtherAtSnmpd) {
  Served served;
  std::optional<snmp::Later<int>> reply;
  const snmp::Scalar slow(served.module, "1",
                          [&](const snmp::Later<int>& l) { reply.emplace(l); });
  const snmp::Scalar other(served.module, "2", 7);
  served.Start();
  std::string shown;
  std::thread manager([&] { shown = served.Shown("1"); });
  ASSERT_TRUE(testkit::WaitFor(
      [&] {
        const snmp::AgentLock lock = served.agent.Lock();
        return reply.has_value();
      },
      testkit::Deadlines::Session()));
  EXPECT_EQ(served.Shown("2"), "INTEGER: 7");
  reply->Answer(5);
  manager.join();
  EXPECT_EQ(shown, "INTEGER: 5");
}

}  // namespace
