// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>

#include "Thermometer.h"

namespace {

using namespace std::chrono_literals;
using snmp::testing::ErrorStatus;

constexpr char kOwn[] = "1.3.6.1.4.1.32473.3.1.0";
constexpr char kOwnModule[] = "1.3.6.1.4.1.32473.3";

// Virtual time, a master agent and a service that runs by itself.
class Clock : public testing::Test {
 protected:
  void Connect() {
    agent_.Start();
    master_.WaitForRegistrations(1);
    clock_.Advance(0s);
  }

  snmp::testing::Clock clock_;
  snmp::testing::Master master_;
  snmp::Agent agent_{"thermometer", At(master_)};
  Thermometer service_{agent_};
};

TEST_F(Clock, KeepsASessionOverAnyTime) {
  Connect();
  const auto changes = std::make_shared<int>(0);  // one comes with the end
  agent_.OnSession([changes](const snmp::SessionEvent&) { ++*changes; });
  clock_.Advance(24h);
  EXPECT_EQ(*changes, 0);
  EXPECT_EQ(master_.Get(kCelsius), 21);
}

TEST_F(Clock, LetsSysUpTimePass) {
  Connect();
  clock_.Advance(10min);
  EXPECT_EQ(agent_.SysUpTime(), 60000U);
}

TEST_F(Clock, StandsStillOtherwise) {
  Connect();
  const auto now = clock_.Now();
  EXPECT_EQ(master_.Get(kCelsius), 21);
  EXPECT_EQ(clock_.Now(), now);
  clock_.Advance(3s);
  EXPECT_EQ(clock_.Now() - now, 3s);
}

TEST_F(Clock, LetsAnAgentComeBackAfterItsInterval) {
  Connect();
  master_.GoDown();
  clock_.Advance(10min);
  EXPECT_FALSE(agent_.Connected());
  master_.ComeUp();
  EXPECT_FALSE(agent_.Connected());
  clock_.Advance(15s);  // lastRetry
  EXPECT_TRUE(agent_.Connected());
  EXPECT_EQ(master_.Get(kCelsius), 21);
}

TEST_F(Clock, LetsAnAgentNoticeItsLossAtOnce) {
  Connect();
  for (int i = 0; i < 50; ++i) {
    master_.GoDown();
    clock_.Advance(0s);
    ASSERT_FALSE(agent_.Connected());
    master_.ComeUp();
    clock_.Advance(100ms);  // firstRetry
    ASSERT_TRUE(agent_.Connected());
  }
}

TEST_F(Clock, LetsARefusedRegistrationBeTriedAgain) {
  snmp::Agent other("other", At(master_));
  Connect();
  {
    const Thermometer same(other);
    other.Start();
    clock_.Advance(1min);
    EXPECT_EQ(other.Refusals().size(), 1U);
    agent_.Stop();
    clock_.Advance(1min);
    EXPECT_TRUE(other.Refusals().empty());
    EXPECT_EQ(master_.Registrations().at(0).agent, "other");
  }
}

TEST_F(Clock, LetsCachedValuesAge) {
  int asked = 0;
  snmp::Module module(agent_, kOwnModule);
  snmp::Scalar value(module, "1", snmp::Cached([&] { return ++asked; }, 10s));
  Connect();
  master_.WaitForRegistrations(2);
  EXPECT_EQ(master_.Get(kOwn), 1);
  clock_.Advance(9999ms);
  EXPECT_EQ(master_.Get(kOwn), 1);
  clock_.Advance(1ms);
  EXPECT_EQ(master_.Get(kOwn), 2);
}

struct File {
  int octets = 0;
};

TEST_F(Clock, LetsLoadedRowsAge) {
  int loaded = 0;
  snmp::Module module(agent_, kOwnModule);
  snmp::Table<int, File> files(module, "1");
  files.Column(2, &File::octets)
      .Load([&](snmp::Table<int, File>::Rows& rows) { rows[1] = {++loaded}; },
            10s);
  Connect();
  master_.WaitForRegistrations(2);
  const snmp::Oid cell("1.3.6.1.4.1.32473.3.1.1.2.1");
  EXPECT_EQ(master_.Get(cell), 1);
  clock_.Advance(9s);
  EXPECT_EQ(master_.Get(cell), 1);
  clock_.Advance(1s);
  EXPECT_EQ(master_.Get(cell), 2);
}

TEST_F(Clock, LetsAnAnswerThatNeverComesTimeOut) {
  std::optional<snmp::Later<int>> reply;
  snmp::Module module(agent_, kOwnModule);
  snmp::Scalar slow(module, "1",
                    [&](const snmp::Later<int>& later) { reply = later; });
  Connect();
  master_.WaitForRegistrations(2);
  auto pending = master_.StartGet({kOwn});
  clock_.Advance(4s);
  EXPECT_FALSE(pending.IsAnswered());
  clock_.Advance(1s);
  EXPECT_EQ(pending.Result().error, ErrorStatus::GenErr);
}

// In each of its phases a request goes on before the time does.
TEST_F(Clock, LetsEachStartedSetTimeOut) {
  std::optional<snmp::Later<snmp::SetError>> reply;
  snmp::Module module(agent_, kOwnModule);
  snmp::Scalar slow(module, "1", 0, snmp::ReadWrite());
  slow.Apply([&](int, int, const snmp::Later<snmp::SetError>& later) {
    reply = later;
  });
  Connect();
  master_.WaitForRegistrations(2);
  for (int i = 0; i < 50; ++i) {
    auto pending = master_.StartSet({{kOwn, 1}});
    clock_.Advance(5s);
    ASSERT_TRUE(pending.IsAnswered());
    EXPECT_EQ(pending.Result().error, ErrorStatus::CommitFailed);
  }
}

TEST_F(Clock, IsWhatTimeStampsGoBy) {
  snmp::TimeStamp last;
  snmp::Module module(agent_, kOwnModule);
  snmp::Scalar stamp(module, "1", last);
  Connect();
  master_.WaitForRegistrations(2);
  clock_.Advance(1min);
  {
    const snmp::AgentLock lock = agent_.Lock();
    last = snmp::TimeStamp::Now();
  }
  clock_.Advance(1min);
  EXPECT_EQ(master_.Get(kOwn), snmp::TimeTicks(60s));
}

// RFC 2579: what happened before the master agent's start is 0.
TEST_F(Clock, IsWhatTimeStampsOfATimeBeforeTheMasterAgentsStartGoBy) {
  snmp::Module module(agent_, kOwnModule);
  snmp::Scalar stamp(module, "1", snmp::TimeStamp());
  Connect();
  master_.WaitForRegistrations(2);
  clock_.Advance(1min);
  stamp.Set(snmp::TimeStamp::Now());
  master_.GoDown();
  clock_.Advance(1min);
  master_.ComeUp();
  clock_.Advance(1min);
  EXPECT_EQ(master_.Get(kOwn), snmp::TimeTicks());
}

TEST_F(Clock, IsOneAtATime) {
  EXPECT_THROW(snmp::testing::Clock(), std::logic_error);
}

TEST(ClockAtItsEnd, LetsAnAgentGoOnByTheSteadyClock) {
  snmp::testing::Master master;
  snmp::AgentOptions options = At(master);
  options.firstRetry = 1ms;
  options.lastRetry = 2ms;
  snmp::Agent agent("thermometer", options);
  const Thermometer service(agent);
  {
    const snmp::testing::Clock clock;
    master.GoDown();
    agent.Start();
  }
  master.ComeUp();
  master.WaitForRegistrations(1);
  EXPECT_EQ(master.Get(kCelsius), 21);
}

}  // namespace
