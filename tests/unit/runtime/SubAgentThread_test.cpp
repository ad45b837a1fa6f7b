// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <pthread.h>

#include <cerrno>
#include <functional>
#include <future>
#include <limits>

#include "CallJournal.h"
#include "ISNMPSubAgentCallback.h"
#include "LoggedLines.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "support/AgentLibrarySettings.h"
#include "testkit/LoopbackPort.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

// Runs `act` on the subagent thread, once, as an alarm of the agent library.
void OnSubAgentThread(const std::function<void()>& act) {
  std::promise<void> done;
  std::function<void()> body = [&] {
    act();
    done.set_value();
  };
  {
    const NetSNMPAgentGuard guard;
    snmp_alarm_register_hr(
        timeval{0, 1}, 0,
        [](unsigned int, void* action) {
          (*static_cast<std::function<void()>*>(action))();
        },
        &body);
  }
  done.get_future().wait();
  // The alarm has returned when its pass releases the lock.
  const NetSNMPAgentGuard guard;
}

class ARunningSubAgent : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(subAgent_.StartAndLoop()); }

  CallJournal& journal_ = CallJournal::Get();
  LonelySubAgent subAgent_;
};

TEST(AConstructedSubAgent, IsStoppedWithoutEffect) {
  LonelySubAgent subAgent;
  EXPECT_EQ(subAgent.Stop(), 0);
  EXPECT_FALSE(subAgent.IsRunning());
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_THAT(CallJournal::Get().Calls(), IsEmpty());
}

TEST(AConstructedSubAgent, StaysSoWhenNoThreadCanBeMade) {
  pthread_attr_t usual;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  pthread_attr_t endless = usual;
  constexpr std::size_t kMostOfAllAddresses =
      std::numeric_limits<std::size_t>::max() / 16 * 15;
  ASSERT_EQ(pthread_attr_setstacksize(&endless, kMostOfAllAddresses), 0);
  ASSERT_EQ(pthread_setattr_default_np(&endless), 0);
  LonelySubAgent subAgent;
  EXPECT_THROW(subAgent.Start(), boost::thread_resource_error);
  EXPECT_FALSE(subAgent.IsRunning());
  ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
  EXPECT_TRUE(subAgent.StartAndLoop());
}

TEST_F(ARunningSubAgent, IsStartedOnce) {
  EXPECT_TRUE(subAgent_.IsRunning());
  const auto thread = subAgent_.thread_;
  EXPECT_EQ(subAgent_.Start(), 2);
  EXPECT_EQ(subAgent_.thread_, thread);
}

TEST_F(ARunningSubAgent, StaysDisconnectedWithoutAMasterAgent) {
  EXPECT_TRUE(journal_.WaitForPasses(3));
  EXPECT_FALSE(subAgent_.Connected());
  EXPECT_EQ(subAgent_.Connections(), 0);
  for (const timeval& timeout : journal_.Timeouts()) {
    EXPECT_LE(timeout.tv_sec, 5);
  }
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(ARunningSubAgent, CannotBeStartedAgainAfterStop) {
  EXPECT_EQ(subAgent_.Stop(), 0);
  EXPECT_TRUE(subAgent_.IsRunning());
  const int passes = journal_.Count("select");
  EXPECT_EQ(subAgent_.Start(), 2);
  EXPECT_EQ(subAgent_.Stop(), 0);
  EXPECT_TRUE(subAgent_.IsRunning());
  EXPECT_EQ(journal_.Count("select"), passes);
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

class StateReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int state) override { states_.push_back(state); }
  const std::vector<int>& States() const { return states_; }

 private:
  std::vector<int> states_;
};

TEST_F(ARunningSubAgent, CallsNoReceiverWhenItIsStopped) {
  StateReceiver receiver;
  subAgent_.RegisterSubAgentCallback("receiver", &receiver);
  OnSubAgentThread([this] {
    SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                         SNMPD_CALLBACK_INDEX_START, nullptr,
                                         &subAgent_);
  });
  subAgent_.Stop();
  EXPECT_TRUE(subAgent_.Connected());
  EXPECT_THAT(receiver.States(), ElementsAre(1));
}

TEST_F(ARunningSubAgent, DropsTheInterruptionOfAStopperThatWaits) {
  int result = -1;
  bool interruptedAfterwards = true;
  std::promise<void> started;
  std::promise<void> returned;
  boost::thread stopper([&] {
    started.get_future().wait();
    result = subAgent_.Stop();
    interruptedAfterwards = boost::this_thread::interruption_requested();
    returned.set_value();
  });
  stopper.interrupt();
  // Once the subagent thread has ended nothing would be left to wait for.
  OnSubAgentThread([&] {
    started.set_value();
    returned.get_future().wait();
  });
  stopper.join();
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(interruptedAfterwards);
}

TEST_F(ARunningSubAgent, CannotBeStoppedByItsOwnThread) {
  int error = 0;
  std::string text;
  OnSubAgentThread([&] {
    try {
      subAgent_.Stop();
    } catch (const boost::thread_resource_error& failure) {
      error = failure.native_error();
      text = failure.what();
    }
  });
  EXPECT_EQ(error, EDEADLK);
  EXPECT_THAT(text, HasSubstr("boost thread: trying joining itself"));
  const boost::unique_lock<boost::mutex> lock(subAgent_.mutex_,
                                              boost::try_to_lock);
  EXPECT_TRUE(lock.owns_lock());
}

TEST_F(ARunningSubAgent, EndsByItselfWhenItsOwnThreadStopsItAndMayRunAgain) {
  OnSubAgentThread(
      [&] { EXPECT_THROW(subAgent_.Stop(), boost::thread_resource_error); });
  ASSERT_TRUE(subAgent_.WaitForEnd());
  EXPECT_FALSE(subAgent_.IsRunning());
  ASSERT_TRUE(subAgent_.StartAndLoop());
  journal_.Clear();
  EXPECT_TRUE(journal_.WaitForPasses(3));
  // Nothing has arrived: its waits end by their time.
  EXPECT_GT(journal_.Count("snmp_timeout"), 0);
  EXPECT_EQ(journal_.Count("snmp_read"), 0);
}

TEST_F(ARunningSubAgent, EndsByItselfWhenSelectFails) {
  journal_.Clear();
  journal_.AnswerSelect(-1, EBADF);
  ASSERT_TRUE(subAgent_.WaitForEnd());
  EXPECT_FALSE(subAgent_.IsRunning());
  EXPECT_THAT(
      LoggedLines(),
      ElementsAre(Pair(
          3U, "SNMPSubAgent::process(): Select error: Bad file descriptor")));
  // The pass ended where it failed.
  EXPECT_EQ(journal_.Calls().back(), "select");
}

TEST_F(ARunningSubAgent, EndsByItselfWhenSelectReturnsNonsense) {
  journal_.AnswerSelect(-2, 7);
  ASSERT_TRUE(subAgent_.WaitForEnd());
  EXPECT_FALSE(subAgent_.IsRunning());
  EXPECT_THAT(LoggedLines(),
              ElementsAre(Pair(3U,
                               "SNMPSubAgent::process(): Unknown select error "
                               "[count: -2][errno: 7]")));
}

TEST_F(ARunningSubAgent, GoesOnAfterASignal) {
  for (int signal = 0; signal < 3; ++signal) {
    journal_.AnswerSelect(-1, EINTR);
  }
  EXPECT_TRUE(journal_.WaitForPasses(5));
  EXPECT_TRUE(subAgent_.IsRunning());
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(ARunningSubAgent, RunsAgainAfterAFailureWithoutAnotherSetUp) {
  for (int failure = 1; failure <= 2; ++failure) {
    journal_.AnswerSelect(-1, EBADF);
    ASSERT_TRUE(subAgent_.WaitForEnd());
    ASSERT_TRUE(subAgent_.StartAndLoop());
    EXPECT_TRUE(subAgent_.IsRunning());
    EXPECT_TRUE(journal_.WaitForPasses(3));
    EXPECT_EQ(LoggedLines().size(), failure);
  }
  EXPECT_EQ(journal_.Count("init_agent"), 1);
  EXPECT_EQ(journal_.Count("init_snmp"), 1);
}

class InterruptedReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int) override { throw boost::thread_interrupted(); }
};

TEST_F(ARunningSubAgent, EndsWhenAReceiverIsInterrupted) {
  InterruptedReceiver receiver;
  subAgent_.RegisterSubAgentCallback("receiver", &receiver);
  OnSubAgentThread([this] {
    SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                         SNMPD_CALLBACK_INDEX_START, nullptr,
                                         &subAgent_);
  });
  EXPECT_TRUE(subAgent_.WaitForEnd());
  EXPECT_FALSE(subAgent_.IsRunning());
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

// Leaves its end to the destructor of SNMPSubAgent.
class NeglectfulSubAgent : public SNMPSubAgent {
 public:
  NeglectfulSubAgent(const std::string& name, int masterPort, int& stops)
      : SNMPSubAgent(name, "127.0.0.1", masterPort), stops_(stops) {}

  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {}
  int Stop() override {
    ++stops_;
    return SNMPSubAgent::Stop();
  }

 private:
  int& stops_;
};

TEST(ASubAgentDestroyedWhileRunning, HasStoppedItsThreadByItself) {
  const support::AgentLibrarySettings settings("neglectful", "");
  const testkit::LoopbackPort port;
  int stops = 0;
  boost::shared_ptr<boost::thread> thread;
  {
    NeglectfulSubAgent subAgent("neglectful", port.Number(), stops);
    ASSERT_EQ(subAgent.Start(), 1);
    ASSERT_TRUE(CallJournal::Get().WaitForPasses(2));
    thread = subAgent.thread_;
  }
  EXPECT_FALSE(thread->joinable());
  EXPECT_EQ(stops, 0);
}

TEST(ASubAgentDestroyedWhileRunning,
     IgnoresAnEventThatComesWhileItsThreadEnds) {
  const support::AgentLibrarySettings settings("neglectful", "");
  const testkit::LoopbackPort port;
  CallJournal& journal = CallJournal::Get();
  int stops = 0;
  bool raised = false;
  {
    NeglectfulSubAgent subAgent("neglectful", port.Number(), stops);
    ASSERT_EQ(subAgent.Start(), 1);
    ASSERT_TRUE(journal.WaitForPasses(2));
    journal.SetHook([&](const std::string& call) {
      if (call != "select" || !boost::this_thread::interruption_requested())
        return;
      const NetSNMPAgentGuard guard;
      // No override is left to call, and those of SNMPSubAgent are pure.
      snmp_call_callbacks(SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_START,
                          nullptr);
      raised = true;
    });
  }
  EXPECT_TRUE(raised);
}

}  // namespace
