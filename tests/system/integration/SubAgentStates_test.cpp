// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "IRunnable.h"
#include "LogSink.h"
#include "NetSNMPAgentGuard.h"
#include "support/AgentXConnection.h"
#include "support/NodeRegistry.h"
#include "support/Scalars.h"
#include "support/Session.h"
#include "support/Threads.h"
#include "testkit/Deadlines.h"
#include "testkit/LoopbackPort.h"
#include "testkit/MasterAgent.h"
#include "testkit/WaitFor.h"

using support::AddIntScalar;
using support::AgentXConnection;
using support::NodeRegistry;
using support::ScalarOid;
using support::Session;
using support::TestSubAgent;
using support::ThreadCount;
using support::WaitForThreadCount;
using testing::ElementsAre;
using testing::HasSubstr;
using testkit::Deadlines;
using testkit::LoopbackPort;
using testkit::MasterAgent;
using testkit::WaitFor;

namespace {

TEST(ASubAgentNotYetStarted, NeitherRunsNorIsConnected) {
  const std::size_t threads = ThreadCount();
  const TestSubAgent subAgent(LoopbackPort().Number());
  EXPECT_FALSE(subAgent.IsRunning());
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_EQ(ThreadCount(), threads);
}

TEST(ASubAgentNotYetStarted, IsStoppedWithoutEffect) {
  TestSubAgent subAgent(LoopbackPort().Number());
  EXPECT_EQ(subAgent.Stop(), 0);
  EXPECT_FALSE(subAgent.IsRunning());
  EXPECT_TRUE(subAgent.StartAndInitialize());
}

TEST(ASubAgentWithoutMasterAgent, RunsAndIsNotConnected) {
  const LoopbackPort port;
  TestSubAgent subAgent(port.Number());
  ASSERT_TRUE(subAgent.StartAndInitialize());
  EXPECT_TRUE(subAgent.IsRunning());
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_EQ(subAgent.Start(), 2);
}

TEST(ASubAgentWithoutMasterAgent, IsStoppedWithinTheLongestWait) {
  const LoopbackPort port;
  TestSubAgent subAgent(port.Number());
  ASSERT_TRUE(subAgent.StartAndInitialize());
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(subAgent.Stop(), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, Deadlines::Stop());
  EXPECT_FALSE(subAgent.Connected());
}

TEST(AConnectedSubAgent, IsStoppedBeforeItsWaitWouldEnd) {
  Session session("");
  session.Connect();
  AddIntScalar(1, "scalar", 1);
  // When the manager has its response, the thread is waiting again.
  ASSERT_TRUE(session.Manager().Get(ScalarOid(1)).Succeeded());
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(session.SubAgent().Stop(), 0);
  // Five seconds without a wake.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
}

TEST(AConnectedSubAgent, RunsAndCannotBeStartedTwice) {
  Session session;
  session.Connect();
  EXPECT_TRUE(session.SubAgent().IsRunning());
  EXPECT_TRUE(session.SubAgent().Connected());
  EXPECT_EQ(session.SubAgent().Start(), 2);
}

TEST(AConnectedSubAgent, HasExactlyOneThread) {
  Session session;
  const std::size_t before = ThreadCount();
  AddIntScalar(1, "scalar", 1);
  session.Connect();
  session.Manager().Get(ScalarOid(1));
  EXPECT_EQ(ThreadCount(), before + 1);
  session.SubAgent().Stop();
  EXPECT_TRUE(WaitForThreadCount(before));
}

TEST(AConnectedSubAgent, IsRunAndStoppedThroughThePlatformsInterface) {
  Session session;
  vela::IRunnable& task = session.SubAgent();
  EXPECT_FALSE(task.IsRunning());
  EXPECT_EQ(task.Start(), 1);
  EXPECT_TRUE(session.SubAgent().WaitForConnections(1));
  EXPECT_TRUE(task.IsRunning());
  EXPECT_EQ(task.Stop(), 0);
}

TEST(AStoppedSubAgent, StaysAsItWasAndCannotBeStartedAgain) {
  Session session;
  session.Connect();
  const std::size_t threads = ThreadCount();
  EXPECT_EQ(session.SubAgent().Stop(), 0);
  EXPECT_TRUE(session.SubAgent().IsRunning());
  EXPECT_TRUE(session.SubAgent().Connected());
  EXPECT_EQ(session.SubAgent().Start(), 2);
  EXPECT_EQ(session.SubAgent().Stop(), 0);
  EXPECT_TRUE(WaitForThreadCount(threads - 1));
  EXPECT_THAT(session.Receiver().States(), ElementsAre(1));
}

TEST(AStoppedSubAgent, DoesNotNoticeThatTheMasterAgentEnds) {
  Session session;
  session.Connect();
  session.SubAgent().Stop();
  session.Master().End();
  EXPECT_TRUE(session.SubAgent().Connected());
  EXPECT_THAT(session.Receiver().States(), ElementsAre(1));
}

TEST(AStoppedSubAgent, TakesItsNodesBackFromTheMasterAgent) {
  Session session;
  session.Connect();
  AddIntScalar(1, "scalar", 1);
  session.SubAgent().Stop();
  NetSNMPNode::DeleteNodes();
  EXPECT_THAT(session.Manager().Get(ScalarOid(1)).out, HasSubstr("No Such"));
}

// The lines that the runtime logs. A sink is a plain function.
std::mutex logMutex;
std::vector<std::string> log;

void RecordLine(unsigned int level, const std::string& text) {
  const std::lock_guard<std::mutex> lock(logMutex);
  log.push_back(std::to_string(level) + " " + text);
}

void Ignore(int) {}

// Takes the connection's descriptor away below the agent library, so that
// select() fails, and puts it back.
class ASubAgentEndedByItself : public testing::Test {
 protected:
  // A ping would find the closed descriptor before select() does: there is none
  // for a minute.
  ASubAgentEndedByItself() : session_("agentXPingInterval 60\n") {
    SetLogSink(RecordLine);
    signal(SIGUSR1, Ignore);
    session_.Connect();
    AddIntScalar(1, "scalar", 1);
  }

  ~ASubAgentEndedByItself() override { SetLogSink(nullptr); }

  bool EndByItself() {
    const int descriptor =
        AgentXConnection(session_.Master().AgentXPort()).Descriptor();
    const int kept = dup(descriptor);
    const pthread_t thread = session_.SubAgent().thread_->native_handle();
    {
      // Newer kernels have a select() that waits for a closed descriptor find
      // it readable: what it found then counts as out of date.
      const NetSNMPAgentGuard guard;
      close(descriptor);
    }
    pthread_kill(thread, SIGUSR1);
    const bool ended = WaitFor(
        [this] { return !session_.SubAgent().IsRunning(); }, Deadlines::Pass());
    dup2(kept, descriptor);
    close(kept);
    return ended;
  }

  Session session_;
};

TEST_F(ASubAgentEndedByItself, DoesNotRunAndHasLoggedWhy) {
  ASSERT_TRUE(EndByItself());
  EXPECT_TRUE(session_.SubAgent().Connected());
  EXPECT_EQ(session_.SubAgent().Stop(), 0);
  EXPECT_THAT(session_.Receiver().States(), ElementsAre(1));
  const std::lock_guard<std::mutex> lock(logMutex);
  EXPECT_THAT(log, ElementsAre("3 SNMPSubAgent::process(): Select error: Bad "
                               "file descriptor"));
}

TEST_F(ASubAgentEndedByItself, CanBeStartedAgainAndServesTheSameNodes) {
  ASSERT_TRUE(EndByItself());
  EXPECT_EQ(session_.SubAgent().Start(), 1);
  EXPECT_TRUE(session_.SubAgent().IsRunning());
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out,
              HasSubstr("INTEGER: 1"));
  EXPECT_EQ(session_.SubAgent().Connections(), 1);
}

TEST(ASignal, DoesNotEndTheSubAgent) {
  Session session;
  session.Connect();
  AddIntScalar(1, "scalar", 1);
  signal(SIGUSR1, Ignore);
  for (int i = 0; i < 20; ++i) {
    pthread_kill(session.SubAgent().thread_->native_handle(), SIGUSR1);
    session.Manager().Get(ScalarOid(1));
  }
  EXPECT_TRUE(session.SubAgent().IsRunning());
  EXPECT_THAT(session.Manager().Get(ScalarOid(1)).out, HasSubstr("INTEGER: 1"));
}

TEST(ASubAgentDestroyedWhileConnected, HasEndedItsThread) {
  MasterAgent master;
  const std::size_t threads = ThreadCount();
  {
    TestSubAgent subAgent(master.AgentXPort());
    ASSERT_TRUE(subAgent.StartAndConnect());
  }
  EXPECT_TRUE(WaitForThreadCount(threads));
}

TEST(ASubAgentDestroyedWhileConnected, LeavesNodesDisconnected) {
  MasterAgent master;
  NodeRegistry registry;
  auto subAgent = std::make_unique<TestSubAgent>(master.AgentXPort());
  ASSERT_TRUE(subAgent->StartAndConnect());
  NetSNMPDataNode* const before = AddIntScalar(1, "before", 1);
  ASSERT_TRUE(before->registered_);
  subAgent.reset();
  EXPECT_FALSE(AddIntScalar(2, "after", 2)->registered_);
  before->UnregisterNode();
  EXPECT_FALSE(before->registered_);
}

TEST(ASubAgentDestroyedWhileConnected, IsNotToldThatTheMasterAgentEnds) {
  MasterAgent master;
  support::ConnectionReceiver receiver;
  auto first = std::make_unique<TestSubAgent>(master.AgentXPort());
  first->RegisterSubAgentCallback("receiver", &receiver);
  ASSERT_TRUE(first->StartAndConnect());
  first.reset();

  // The loop of a later subagent is what now finds the session lost.
  TestSubAgent second(master.AgentXPort());
  ASSERT_EQ(second.Start(), 1);
  master.End();
  EXPECT_TRUE(WaitFor(
      [&] {
        try {
          const AgentXConnection connection(master.AgentXPort());
          return false;
        } catch (const std::runtime_error&) {
          return true;
        }
      },
      Deadlines::Session()));
  EXPECT_FALSE(second.Connected());
  EXPECT_THAT(receiver.States(), ElementsAre(1));
}

}  // namespace
