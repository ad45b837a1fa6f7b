// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FROZENMASTERTEST_H_
#define SNMPSUBAGENT_TESTS_FROZENMASTERTEST_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "support/Scalars.h"
#include "support/Session.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

// Long enough for a master agent on a busy machine. Nothing may take as long as
// a single request does by default, which leaves room for a ping and a new
// attempt of a second each.
inline constexpr std::chrono::milliseconds kReplyTimeout{1000};
inline constexpr std::chrono::milliseconds kAnything{5500};

template <typename Body>
std::chrono::milliseconds TimeOf(const Body& body) {
  const auto start = std::chrono::steady_clock::now();
  body();
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
}

// Takes the lock again and again, and remembers for how long it had to wait.
class LongestWait {
 public:
  LongestWait() : thread_([this] { Run(); }) {}
  ~LongestWait() {
    if (thread_.joinable()) End();
  }

  std::chrono::milliseconds End() {
    ended_ = true;
    thread_.join();
    return longest_;
  }

 private:
  void Run() {
    while (!ended_) {
      longest_ = std::max(longest_, TimeOf([] { NetSNMPAgentGuard(); }));
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  std::chrono::milliseconds longest_{0};
  std::atomic<bool> ended_{false};
  std::thread thread_;
};

// A master agent that does not respond, and a subagent with a reply timeout. By
// default each request waits for 6 seconds.
class FrozenMasterTest : public testing::Test {
 protected:
  FrozenMasterTest() : session_("") {
    EXPECT_TRUE(session_.SubAgent().SetReplyTimeout(kReplyTimeout, 0));
    EXPECT_TRUE(session_.SubAgent().SetPingInterval(std::chrono::seconds(1)));
    support::AddIntScalar(1, "first", 1);
  }
  ~FrozenMasterTest() override { session_.Master().Thaw(); }

  void ConnectAndFreeze() {
    session_.Connect();
    session_.Master().Freeze();
  }

  void ExpectServedAfterThaw(const std::vector<std::string>& oids) {
    const int before = session_.SubAgent().Connections();
    session_.Master().Thaw();
    ASSERT_TRUE(session_.SubAgent().WaitForConnections(before + 1));
    for (const std::string& oid : oids) {
      EXPECT_TRUE(testkit::WaitFor(
          [&] { return session_.Manager().Get(oid).Succeeded(); },
          testkit::Deadlines::Session()))
          << oid;
    }
  }

  support::Session session_;
};

#endif  // SNMPSUBAGENT_TESTS_FROZENMASTERTEST_H_
