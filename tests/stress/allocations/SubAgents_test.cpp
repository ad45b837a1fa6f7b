// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>

#include <future>

#include "FailingNew.h"
#include "ISNMPSubAgentCallback.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "support/AgentLibrarySettings.h"

namespace {

constexpr char kLongName[] = "a name too long to lie inline";

class SubAgent : public SNMPSubAgent {
 public:
  SubAgent() : SNMPSubAgent(kLongName, "127.0.0.1", 1) {}
  ~SubAgent() override { Stop(); }
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { delete new int(1); }
};

class Receiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int state) override { delete new int(state); }
};

TEST(ASubAgentWithoutMemory, IsBuiltWholeOrNotAtAll) {
  WithEachAllocationFailing(
      [](const auto& fail) { fail([] { const SubAgent subAgent; }); });
}

TEST(ASubAgentWithoutMemory, TakesAReceiverOrNot) {
  Receiver receiver;
  WithEachAllocationFailing([&](const auto& fail) {
    SubAgent subAgent;
    const bool taken =
        fail([&] { subAgent.RegisterSubAgentCallback(kLongName, &receiver); });
    EXPECT_EQ(subAgent.callbacks_.size(), taken ? 1U : 0U);
  });
}

TEST(ASubAgentWithoutMemory, TakesEventsWhateverItsReceiversRunOutOf) {
  Receiver receiver;
  WithEachAllocationFailing([&](const auto& fail) {
    SubAgent subAgent;
    subAgent.RegisterSubAgentCallback(kLongName, &receiver);
    EXPECT_TRUE(fail([&] {
      SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                           SNMPD_CALLBACK_INDEX_START, nullptr,
                                           &subAgent);
    }));
    EXPECT_TRUE(subAgent.Connected());
  });
}

// The loop has begun: Stop() requires so.
void WaitForLoop() {
  std::promise<void> looping;
  {
    const NetSNMPAgentGuard guard;
    snmp_alarm_register_hr(
        timeval{0, 1}, 0,
        [](unsigned int, void* promise) {
          static_cast<std::promise<void>*>(promise)->set_value();
        },
        &looping);
  }
  looping.get_future().wait();
}

TEST(ASubAgentWithoutMemory, HasNoThreadWhenNoneCouldBeMade) {
  const support::AgentLibrarySettings settings(kLongName, "");
  int failures = 0;
  for (int number = 1;; ++number) {
    SubAgent subAgent;
    bool happened = false;
    try {
      const AllocationFailure failure(number);
      subAgent.Start();
      happened = failure.Happened();
    } catch (const std::bad_alloc&) {
      happened = true;
      EXPECT_FALSE(subAgent.IsRunning());
      ++failures;
    }
    if (subAgent.IsRunning()) WaitForLoop();
    if (!happened) break;
  }
  EXPECT_GT(failures, 0);
}

}  // namespace
