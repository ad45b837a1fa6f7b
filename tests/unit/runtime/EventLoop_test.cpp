// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <cerrno>
#include <future>
#include <thread>

#include "CallJournal.h"
#include "ISNMPSubAgentCallback.h"
#include "LoggedLines.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::vector<std::string> kIdlePass = {
    "snmp_select_info", "select",
    "snmp_timeout",     "snmp_store_if_needed",
    "run_alarms",       "netsnmp_check_outstanding_agent_requests"};

// Passes of the event loop that the test makes itself, without a subagent
// thread or a set-up of the agent library.
class APass : public testing::Test {
 protected:
  APass() {
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                           NETSNMP_DS_LIB_ALARM_DONT_USE_SIG, 1);
  }
  ~APass() override { journal_.SetHook({}); }

  // The calls of one pass in which the first select() returns `result`.
  std::vector<std::string> CallsAfterSelect(int result, int error) {
    journal_.AnswerSelect(result, error);
    journal_.Clear();
    subAgent_.process();
    return journal_.Calls();
  }

  // While the pass waits, that is; it holds the lock when it looks again.
  void AnotherThreadUsesTheAgentLibrary() {
    journal_.SetHook([this](const std::string& call) {
      if (call != "select") return;
      journal_.SetHook({});
      std::thread([] { NetSNMPAgentGuard(); }).join();
    });
  }

  CallJournal& journal_ = CallJournal::Get();
  LonelySubAgent subAgent_;
};

TEST_F(APass, HandlesTimeoutsWhenNothingArrives) {
  subAgent_.process();
  EXPECT_THAT(journal_.Calls(), ElementsAreArray(kIdlePass));
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(APass, ReadsWhatHasArrived) {
  EXPECT_THAT(CallsAfterSelect(1, 0),
              ElementsAre("snmp_select_info", "select", "snmp_read",
                          "snmp_store_if_needed", "run_alarms",
                          "netsnmp_check_outstanding_agent_requests"));
}

TEST_F(APass, LooksAgainWithoutWaitingAfterAnotherThreadUsedTheAgentLibrary) {
  AnotherThreadUsesTheAgentLibrary();
  journal_.AnswerSelect(1);
  journal_.AnswerSelect(1);
  subAgent_.process();
  EXPECT_THAT(
      journal_.Calls(),
      ElementsAre("snmp_select_info", "select", "snmp_select_info", "select",
                  "snmp_read", "snmp_store_if_needed", "run_alarms",
                  "netsnmp_check_outstanding_agent_requests"));
  const std::vector<timeval> timeouts = journal_.Timeouts();
  ASSERT_EQ(timeouts.size(), 2U);
  EXPECT_EQ(timeouts[1].tv_sec, 0);
  EXPECT_EQ(timeouts[1].tv_usec, 0);
}

TEST_F(APass, ReadsNothingThatWasGoneAtTheSecondLook) {
  for (const int second : {0, -1}) {
    AnotherThreadUsesTheAgentLibrary();
    journal_.AnswerSelect(1);
    journal_.AnswerSelect(second, EBADF);
    journal_.Clear();
    subAgent_.process();
    EXPECT_THAT(journal_.Calls(),
                ElementsAre("snmp_select_info", "select", "snmp_select_info",
                            "select", "snmp_store_if_needed", "run_alarms",
                            "netsnmp_check_outstanding_agent_requests"));
  }
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(APass, RunsItsHousekeepingAfterASignal) {
  EXPECT_THAT(
      CallsAfterSelect(-1, EINTR),
      ElementsAre("snmp_select_info", "select", "snmp_store_if_needed",
                  "run_alarms", "netsnmp_check_outstanding_agent_requests"));
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

struct Failure {
  int result;
  int error;
  std::string line;
};

TEST_F(APass, LogsAFailureOfSelectOnce) {
  const Failure failures[] = {
      {-1, EBADF, "Select error: Bad file descriptor"},
      {-1, EINVAL, "Select error: Invalid argument"},
      {-1, ENOMEM, "Select error: Cannot allocate memory"},
      {-2, 7, "Unknown select error [count: -2][errno: 7]"},
      {-2, EINTR, "Unknown select error [count: -2][errno: 4]"},
      {-100, 0, "Unknown select error [count: -100][errno: 0]"}};
  std::vector<LoggedLine> expected;
  for (const Failure& failure : failures) {
    CallsAfterSelect(failure.result, failure.error);
    expected.emplace_back(3U, "SNMPSubAgent::process(): " + failure.line);
  }
  EXPECT_EQ(LoggedLines(), expected);
}

TEST_F(APass, MindsADescriptorClosedByAnotherThreadNoMoreThanASignal) {
  AnotherThreadUsesTheAgentLibrary();
  EXPECT_THAT(
      CallsAfterSelect(-1, EBADF),
      ElementsAre("snmp_select_info", "select", "snmp_store_if_needed",
                  "run_alarms", "netsnmp_check_outstanding_agent_requests"));
  EXPECT_THAT(LoggedLines(), IsEmpty());
  CallsAfterSelect(-1, ENOMEM);
  EXPECT_EQ(LoggedLines().size(), 1U);
}

TEST_F(APass, WaitsFiveSecondsWhenTheAgentLibraryHasNoDeadline) {
  subAgent_.process();
  ASSERT_EQ(journal_.Timeouts().size(), 1U);
  EXPECT_EQ(journal_.Timeouts()[0].tv_sec, 5);
  EXPECT_EQ(journal_.Timeouts()[0].tv_usec, 0);
}

TEST_F(APass, WaitsFiveSecondsWhateverTheOneBeforeFound) {
  for (const int found : {0, 1, 0, -1, 0}) {
    journal_.AnswerSelect(found, EINTR);
    subAgent_.process();
  }
  ASSERT_EQ(journal_.Timeouts().size(), 5U);
  for (const timeval& timeout : journal_.Timeouts()) {
    EXPECT_EQ(timeout.tv_sec, 5);
    EXPECT_EQ(timeout.tv_usec, 0);
  }
}

TEST_F(APass, WaitsNoLongerForALaterDeadline) {
  snmp_alarm_register(
      60, 0, [](unsigned int, void*) {}, nullptr);
  subAgent_.process();
  ASSERT_EQ(journal_.Timeouts().size(), 1U);
  EXPECT_EQ(journal_.Timeouts()[0].tv_sec, 5);
  EXPECT_EQ(journal_.Timeouts()[0].tv_usec, 0);
}

TEST_F(APass, WaitsUntilAnEarlierDeadlineOnly) {
  snmp_alarm_register(
      3, 0, [](unsigned int, void*) {}, nullptr);
  subAgent_.process();
  ASSERT_EQ(journal_.Timeouts().size(), 1U);
  EXPECT_LE(journal_.Timeouts()[0].tv_sec, 3);
}

TEST_F(APass, ServesAlarms) {
  bool rung = false;
  snmp_alarm_register_hr(
      timeval{0, 1}, 0,
      [](unsigned int, void* flag) { *static_cast<bool*>(flag) = true; },
      &rung);
  subAgent_.process();
  EXPECT_TRUE(rung);
}

TEST_F(APass, EndsAtTheNextInterruptionPoint) {
  for (std::size_t last = 0; last < kIdlePass.size(); ++last) {
    journal_.Clear();
    std::promise<void> started;
    bool interrupted = false;
    boost::thread thread([&] {
      started.get_future().wait();
      try {
        subAgent_.process();
      } catch (const boost::thread_interrupted&) {
        interrupted = true;
      }
    });
    journal_.SetHook([&](const std::string& call) {
      if (call == kIdlePass[last]) thread.interrupt();
    });
    started.set_value();
    thread.join();
    const std::vector<std::string> expected(kIdlePass.begin(),
                                            kIdlePass.begin() + last + 1);
    EXPECT_EQ(journal_.Calls(), expected);
    EXPECT_EQ(interrupted, last + 1 < kIdlePass.size()) << kIdlePass[last];
  }
}

TEST_F(APass, DoesNotBeginWhenItsThreadIsInterrupted) {
  bool interrupted = false;
  std::promise<void> started;
  boost::thread thread([&] {
    started.get_future().wait();
    try {
      subAgent_.process();
    } catch (const boost::thread_interrupted&) {
      interrupted = true;
    }
  });
  thread.interrupt();
  started.set_value();
  thread.join();
  EXPECT_TRUE(interrupted);
  EXPECT_THAT(journal_.Calls(), IsEmpty());
}

class InterruptedReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int) override { throw boost::thread_interrupted(); }
};

TEST_F(APass, RaisesTheInterruptionOfAReceiverAgain) {
  InterruptedReceiver receiver;
  subAgent_.RegisterSubAgentCallback("receiver", &receiver);
  // An event may come up while the pass reads, and while it runs alarms.
  const std::pair<std::string, std::size_t> cases[] = {{"snmp_timeout", 3},
                                                       {"run_alarms", 6}};
  for (const auto& each : cases) {
    journal_.Clear();
    journal_.SetHook([&](const std::string& call) {
      if (call != each.first) return;
      SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                           SNMPD_CALLBACK_INDEX_START, nullptr,
                                           &subAgent_);
    });
    EXPECT_THROW(subAgent_.process(), boost::thread_interrupted) << each.first;
    EXPECT_EQ(journal_.Calls().size(), each.second) << each.first;
  }
}

TEST_F(APass, LeavesTheLockToOthersWhileItWaits) {
  bool taken = false;
  journal_.SetHook([&](const std::string& call) {
    if (call != "select") return;
    std::thread([&] {
      const NetSNMPAgentGuard guard;
      taken = true;
    }).join();
  });
  subAgent_.process();
  EXPECT_TRUE(taken);
}

TEST_F(APass, HoldsTheLockFromItsWaitToItsEnd) {
  std::thread other;
  journal_.SetHook([&](const std::string& call) {
    if (call != "snmp_timeout") return;
    std::promise<void> asking;
    other = std::thread([&] {
      asking.set_value();
      const NetSNMPAgentGuard guard;
      journal_.Begin("another thread");
    });
    asking.get_future().wait();
    std::this_thread::yield();
  });
  subAgent_.process();
  other.join();
  std::vector<std::string> expected = kIdlePass;
  expected.emplace_back("another thread");
  EXPECT_EQ(journal_.Calls(), expected);
}

}  // namespace
