// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <thread>

#include "Thermometer.h"
#include "testkit/FileDescriptor.h"

namespace {

using namespace std::chrono_literals;
using snmp::testing::ErrorStatus;

// A service on the thread of the test.
class Loop : public testing::Test {
 protected:
  Loop() { master_.WaitForRegistrations(1); }

  snmp::testing::Clock clock_;
  snmp::testing::Master master_;
  snmp::Agent agent_{"thermometer", At(master_)};
  Thermometer service_{agent_};
  snmp::testing::Loop loop_{agent_};
};

TEST_F(Loop, ServesAnAgentWhileTheTestWaits) {
  EXPECT_EQ(master_.Get(kCelsius), 21);
  EXPECT_EQ(master_.Set(kLimit, 70), ErrorStatus::NoError);
  EXPECT_EQ(service_.limit.Get(), 70);
}

TEST_F(Loop, CallsTheFunctionsOfTheServiceOnTheThreadOfTheTest) {
  std::thread::id caller;
  service_.limit.Changed([&](int) { caller = std::this_thread::get_id(); });
  ASSERT_EQ(master_.Set(kLimit, 70), ErrorStatus::NoError);
  EXPECT_EQ(caller, std::this_thread::get_id());
}

TEST_F(Loop, ServesWhileARequestIsPending) {
  auto pending = master_.StartSet({{kLimit, 70}});
  EXPECT_TRUE(pending.Result().Succeeded());
}

TEST_F(Loop, ServesWhileANotificationIsAwaited) {
  service_.overheated.Send();
  EXPECT_EQ(master_.NextNotification().name, snmp::Oid(kOverheated));
}

TEST_F(Loop, ServesWhileTimePasses) {
  master_.GoDown();
  clock_.Advance(1min);
  EXPECT_FALSE(agent_.Connected());
  master_.ComeUp();
  clock_.Advance(1min);
  EXPECT_TRUE(agent_.Connected());
}

TEST_F(Loop, CallsWhatWatchesADescriptor) {
  const testkit::FileDescriptor event(eventfd(0, EFD_CLOEXEC));
  int calls = 0;
  loop_.Watch(event.Number(), [&] {
    eventfd_t count = 0;
    eventfd_read(event.Number(), &count);
    ++calls;
  });
  loop_.RunOnce();
  EXPECT_EQ(calls, 0);
  eventfd_write(event.Number(), 1);
  loop_.RunOnce();
  EXPECT_EQ(calls, 1);
}

}  // namespace
