// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPAgentGuard.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "adapter/AgentLock.h"
#include "support/LockWitness.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace {

using testing::ElementsAre;

// Whether a thread of this process waits for something.
bool Sleeps(pid_t thread) {
  std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
  const std::string stat(std::istreambuf_iterator<char>(file), {});
  const std::size_t end = stat.rfind(") ");
  return end != std::string::npos && stat[end + 2] == 'S';
}

// Waits until the thread that will be in `thread` has slept for several looks
// in a row: it has asked for the lock then.
bool WaitForSleep(const std::atomic<pid_t>& thread) {
  int looks = 0;
  const auto sleeps = [&] {
    looks = thread != 0 && Sleeps(thread) ? looks + 1 : 0;
    return looks == 5;
  };
  return testkit::WaitFor(sleeps, testkit::Deadlines::Pass());
}

TEST(AGuard, GivesTheLockBackWhenItEnds) {
  const unsigned long turn = TurnNow();
  EXPECT_EQ(TurnNow(), turn + 1);
}

TEST(AGuard, NestsWithoutHandingTheLockOver) {
  const unsigned long turn = TurnNow();
  {
    const NetSNMPAgentGuard outer;
    EXPECT_EQ(TurnNow(), turn + 1);
    EXPECT_EQ(TurnNow(), turn + 1);
    EXPECT_EQ(agent_lock::Turn(), turn + 1);
  }
  EXPECT_EQ(TurnNow(), turn + 2);
}

TEST(AGuard, GivesTheLockBackWhenAnExceptionPasses) {
  const unsigned long turn = TurnNow();
  try {
    const NetSNMPAgentGuard outer;
    const NetSNMPAgentGuard inner;
    throw std::runtime_error("passes");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(TurnNow(), turn + 2);
  }
}

TEST(AGuard, IsHeldByOneThreadAtATime) {
  constexpr int kRounds = 2000;
  int count = 0;
  bool held = false;
  const auto work = [&] {
    for (int i = 0; i < kRounds; ++i) {
      const NetSNMPAgentGuard guard;
      EXPECT_FALSE(held);
      held = true;
      const NetSNMPAgentGuard inner;
      ++count;
      held = false;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 4 * kRounds);
}

TEST(AGuard, IsHandedOverInTheOrderOfAsking) {
  std::vector<int> order;
  std::vector<std::thread> threads;
  {
    const NetSNMPAgentGuard guard;
    for (int i = 1; i <= 3; ++i) {
      std::atomic<pid_t> asking{0};
      threads.emplace_back([&order, &asking, i] {
        asking = gettid();
        const NetSNMPAgentGuard next;
        order.push_back(i);
      });
      EXPECT_TRUE(WaitForSleep(asking));
    }
  }
  {
    const NetSNMPAgentGuard again;
    order.push_back(0);
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(order, ElementsAre(1, 2, 3, 0));
}

TEST(AGuard, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<NetSNMPAgentGuard>);
  EXPECT_FALSE(std::is_copy_assignable_v<NetSNMPAgentGuard>);
}

}  // namespace
