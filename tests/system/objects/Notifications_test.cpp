// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Notifications by way of a real snmpd, counted where they arrive: at snmptrapd
// or, where UDP could lose some, by the responses of the master agent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "Served.h"
#include "testkit/Deadlines.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/TrapReceiver.h"
#include "testkit/WaitFor.h"

using snmp::NotificationResult;
using testing::Each;
using testing::EndsWith;
using testing::UnorderedElementsAreArray;
using testkit::Deadlines;

namespace {

// What came of notifications, by outcome. Threads: any.
class Outcomes {
 public:
  snmp::NotificationFunction Function() {
    return
        [this](const NotificationResult& result) { ++counts_[result.outcome]; };
  }
  int Count(NotificationResult::Outcome outcome) const {
    return counts_[outcome];
  }
  bool WaitForCount(NotificationResult::Outcome outcome, int count) const {
    return testkit::WaitFor([=] { return Count(outcome) == count; },
                            4 * Deadlines::Load());
  }

 private:
  std::array<std::atomic<int>, 4> counts_{};
};

// Sends numbered notifications from an agent at snmpd to snmptrapd.
class Sending : public testing::Test {
 protected:
  Sending() : served_(receiver_.SinkConfiguration()) {}

  void Send(int number) {
    notification_.Send({{snmp::Oid(Served::Name("1")), number}},
                       outcomes_.Function());
  }

  // The numbers in what has arrived.
  std::vector<int> Arrived() const {
    std::vector<int> numbers;
    for (const std::string& line : receiver_.Received()) {
      const std::string key = "INTEGER: ";
      numbers.push_back(std::stoi(line.substr(line.rfind(key) + key.size())));
    }
    return numbers;
  }

  static std::vector<int> Numbers(int first, int last) {
    std::vector<int> numbers;
    for (int i = first; i <= last; ++i) numbers.push_back(i);
    return numbers;
  }

  testkit::TrapReceiver receiver_;
  Outcomes outcomes_;
  Served served_;
  snmp::Notification notification_{served_.module, "0.1"};
};

TEST_F(Sending, ToAMasterAgentThatIsStoppedForFourSecondsHappensOnce) {
  served_.Start();
  served_.master.Freeze();
  Send(1);
  std::this_thread::sleep_for(std::chrono::seconds(4));
  served_.master.Thaw();
  ASSERT_TRUE(receiver_.WaitForCount(1));
  // Whatever was sent before this one arrives before it.
  Send(2);
  ASSERT_TRUE(receiver_.WaitForCount(2));
  EXPECT_EQ(Arrived(), Numbers(1, 2));
  EXPECT_TRUE(outcomes_.WaitForCount(NotificationResult::Sent, 2));
}

TEST_F(Sending, WhileTheMasterAgentIsAwayIsMadeUpForInOrder) {
  served_.Start();
  served_.master.Kill();
  ASSERT_TRUE(testkit::WaitFor([&] { return !served_.agent.Connected(); },
                               Deadlines::Session()));
  for (int i = 1; i <= 50; ++i) Send(i);
  EXPECT_EQ(receiver_.Received().size(), 0U);
  served_.master.Start();
  ASSERT_TRUE(receiver_.WaitForCount(50));
  EXPECT_EQ(Arrived(), Numbers(1, 50));
  EXPECT_TRUE(outcomes_.WaitForCount(NotificationResult::Sent, 50));
  EXPECT_EQ(served_.agent.DroppedNotifications(), 0U);
}

TEST_F(Sending, BeforeTheAgentIsStartedIsMadeUpForInOrder) {
  for (int i = 1; i <= 50; ++i) Send(i);
  served_.Start();
  ASSERT_TRUE(receiver_.WaitForCount(50));
  EXPECT_EQ(Arrived(), Numbers(1, 50));
}

TEST_F(Sending, MoreThanTheLimitWhileThereIsNoSessionDropsTheOldest) {
  snmp::AgentOptions options = OptionsFor(AddressOf(served_.master));
  options.notificationLimit = 10;
  snmp::Agent agent("limited", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.10");
  snmp::Notification notification(module, "0.1");
  for (int i = 1; i <= 25; ++i) {
    notification.Send({{snmp::Oid(Served::Name("1")), i}},
                      outcomes_.Function());
  }
  EXPECT_EQ(agent.DroppedNotifications(), 15U);
  EXPECT_EQ(outcomes_.Count(NotificationResult::Dropped), 15);
  agent.Start();
  ASSERT_TRUE(receiver_.WaitForCount(10));
  EXPECT_EQ(Arrived(), Numbers(16, 25));
  EXPECT_TRUE(outcomes_.WaitForCount(NotificationResult::Sent, 10));
}

TEST_F(Sending, AgainWhateverIsDroppedLosesNothing) {
  std::atomic<bool> insists{true};
  std::function<void(int)> send;
  snmp::AgentOptions options = OptionsFor(AddressOf(served_.master));
  options.notificationLimit = 2;
  snmp::Agent agent("stubborn", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.10");
  snmp::Notification notification(module, "0.1");
  send = [&](int number) {
    notification.Send(
        {{snmp::Oid(Served::Name("1")), number}},
        [&, number](const NotificationResult& result) {
          if (result.outcome != NotificationResult::Sent && insists) {
            send(number);
          }
        });
  };
  for (int i = 1; i <= 20; ++i) send(i);
  agent.Start();
  EXPECT_TRUE(receiver_.WaitForCount(20));
  EXPECT_THAT(Arrived(), UnorderedElementsAreArray(Numbers(1, 20)));
  insists = false;
}

TEST_F(Sending, WithALimitOfNoneIsToldToBeDroppedAtOnce) {
  snmp::AgentOptions options = OptionsFor(AddressOf(served_.master));
  options.notificationLimit = 0;
  snmp::Agent agent("limited", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.10");
  snmp::Notification(module, "0.1")
      .Send({{snmp::Oid(Served::Name("1")), 1}}, outcomes_.Function());
  EXPECT_EQ(outcomes_.Count(NotificationResult::Dropped), 1);
}

TEST_F(Sending, FromAnAgentThatNeverRunsIsToldToBeDroppedAtItsEnd) {
  {
    snmp::Agent agent("idle", OptionsFor(AddressOf(served_.master)));
    snmp::Module module(agent, "1.3.6.1.4.1.32473.10");
    snmp::Notification notification(module, "0.1");
    for (int i = 0; i < 3; ++i) {
      notification.Send({{snmp::Oid(Served::Name("1")), i}},
                        outcomes_.Function());
    }
    EXPECT_EQ(outcomes_.Count(NotificationResult::Dropped), 0);
  }
  EXPECT_EQ(outcomes_.Count(NotificationResult::Dropped), 3);
}

TEST_F(Sending, AfterTheAgentIsGoneIsToldToBeDropped) {
  {
    auto agent = std::make_unique<snmp::Agent>(
        "gone", OptionsFor(AddressOf(served_.master)));
    snmp::Module module(*agent, "1.3.6.1.4.1.32473.10");
    snmp::Notification notification(module, "0.1");
    agent.reset();
    notification.Send({{snmp::Oid(Served::Name("1")), 1}},
                      outcomes_.Function());
  }
  EXPECT_EQ(outcomes_.Count(NotificationResult::Dropped), 1);
}

TEST(AHundredThousandNotifications, SentInOneFunctionAllArriveAndSnmpdAnswers) {
  constexpr int kMany = 100000;
  const testkit::ScratchDirectory directory;
  const std::string address = "unix:" + (directory.Path() / "x").string();
  const testkit::MasterAgent master("agentXSocket " + address + "\n");
  snmp::Agent agent("the tests", OptionsFor(address));
  snmp::Module module(agent, Served::kSubtree);
  snmp::Scalar start(module, "1", 0, snmp::ReadWrite());
  snmp::Notification notification(module, "0.1");
  Outcomes outcomes;
  start.Changed([&](int) {
    for (int i = 0; i < kMany; ++i) {
      notification.Send({start}, outcomes.Function());
    }
  });
  agent.Start();
  ASSERT_TRUE(WaitUntilRegistered(module));

  const std::string name = Served::Name("1");
  ASSERT_EQ(SetAt(master.Manager(), {name, "i", "1"}), "None");
  int answered = 0;
  do {
    ASSERT_EQ(ShownAt(master.Manager(), name), "INTEGER: 1");
    ++answered;
  } while (outcomes.Count(NotificationResult::Sent) < kMany);
  std::printf("%d GETs were answered meanwhile\n", answered);
  EXPECT_GT(answered, 1);
  EXPECT_EQ(outcomes.Count(NotificationResult::Sent), kMany);
  EXPECT_EQ(agent.DroppedNotifications(), 0U);
}

}  // namespace
