// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "support/Scalars.h"
#include "support/Session.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using support::AddIntScalar;
using support::AddScalar;
using support::ScalarOid;
using support::ScalarsOid;
using support::Session;
using testing::HasSubstr;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

// Work done again and again on a thread of its own, until Workers::End().
struct Worker {
  std::atomic<int> rounds{0};
  std::thread thread;
};

class Workers {
 public:
  ~Workers() { End(); }

  void Add(const std::function<void()>& work) {
    Worker& worker = workers_.emplace_back();
    worker.thread = std::thread([this, &worker, work] {
      while (!ending_) {
        work();
        ++worker.rounds;
      }
    });
  }

  // Waits until each has done its work so often; returns whether it has.
  bool WaitForRounds(int rounds) {
    return WaitFor(
        [&] {
          for (const Worker& worker : workers_)
            if (worker.rounds < rounds) return false;
          return true;
        },
        Deadlines::Load());
  }

  void End() {
    ending_ = true;
    for (Worker& worker : workers_)
      if (worker.thread.joinable()) worker.thread.join();
  }

 private:
  std::atomic<bool> ending_{false};
  std::list<Worker> workers_;
};

// Builds a scalar that is deleted again. Its OID is below those that managers
// request: the master agent (Net-SNMP 5.9) fails when an object is withdrawn
// while it is in the middle of a walk over it or of a SET.
NetSNMPDataNode* AddPassingScalar(unsigned long number, int value) {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 98, number, 0};
  return new NetSNMPDataNode(
      oid.data(), oid.size(), "passing" + std::to_string(number),
      NetSNMPIntNodeData(&value, eNodeAccessReadOnly, true), nullptr, "");
}

// A subagent that managers send requests to without a pause.
class UnderLoad : public testing::Test {
 protected:
  UnderLoad() {
    session_.Connect();
    for (int number = 1; number <= 20; ++number)
      AddIntScalar(number, "scalar" + std::to_string(number), number);
    AddScalar(30, "count", NetSNMPIntNodeData(&count_, eNodeAccessReadWrite));
    AddScalar(31, "text", NetSNMPStringNodeData(&text_, eNodeAccessReadWrite));
    workers_.Add([this] {
      EXPECT_EQ(session_.Manager().Objects(ScalarsOid()).size(), 22U);
    });
    workers_.Add([this] {
      EXPECT_TRUE(session_.Manager().BulkWalk(ScalarsOid()).Succeeded());
    });
    workers_.Add([this] {
      EXPECT_TRUE(
          session_.Manager().Set({ScalarOid(30), "i", "30"}).Succeeded());
    });
  }

  int count_ = 30;
  std::string text_ = "text";
  Session session_;
  Workers workers_;
};

TEST_F(UnderLoad, ThreadsMayBuildAndDeleteNodes) {
  for (unsigned long first : {10, 20}) {
    workers_.Add([first] {
      std::vector<NetSNMPDataNode*> nodes;
      for (unsigned long number = first; number < first + 5; ++number)
        nodes.push_back(AddPassingScalar(number, 1));
      for (NetSNMPDataNode* node : nodes) {
        EXPECT_TRUE(node->registered_);
        delete node;
      }
    });
  }
  EXPECT_TRUE(workers_.WaitForRounds(30));
  workers_.End();
  EXPECT_EQ(NetSNMPNode::nodeMap_->size(), 22U);
}

TEST_F(UnderLoad, ThreadsMaySetValuesHoldingAGuard) {
  for (const char* text : {"one thread", "another thread"}) {
    workers_.Add([text] {
      const NetSNMPAgentGuard guard;
      NetSNMPDataNode::SetNodeData("count", 40);
      NetSNMPDataNode::SetNodeData("text", std::string(text));
    });
  }
  EXPECT_TRUE(workers_.WaitForRounds(30));
  workers_.End();
  EXPECT_THAT(session_.Manager().Get(ScalarOid(31)).out, HasSubstr("thread"));
}

TEST_F(UnderLoad, AGuardKeepsSeveralChangesTogether) {
  const auto change = [this] {
    const NetSNMPAgentGuard guard;
    text_ = "in between";
    std::this_thread::yield();
    text_ = "settled";
  };
  change();
  workers_.Add(change);
  for (int round = 0; round < 50; ++round) {
    EXPECT_THAT(session_.Manager().Get(ScalarOid(31)).out,
                HasSubstr("settled"));
  }
}

TEST_F(UnderLoad, AGuardIsGivenToWhoeverAsksWithoutDelay) {
  ASSERT_TRUE(workers_.WaitForRounds(1));
  for (int round = 0; round < 500; ++round) {
    const auto start = std::chrono::steady_clock::now();
    const NetSNMPAgentGuard guard;
    ASSERT_LT(std::chrono::steady_clock::now() - start, Deadlines::Pass());
  }
}

TEST(ABusySubAgent, IsStoppedAtOnce) {
  Session session;
  Workers workers;
  session.Connect();
  AddIntScalar(1, "scalar", 1);
  workers.Add([&session] { session.Manager().Get(ScalarOid(1)); });
  ASSERT_TRUE(workers.WaitForRounds(5));
  const auto start = std::chrono::steady_clock::now();
  session.SubAgent().Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - start, Deadlines::Stop());
}

}  // namespace
