// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An application that keeps its agent busy for longer than the agent waits for
// the master agent: which has answered, and so its session is kept.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

constexpr auto kResponseTimeout = 3s;

class ASlowApplication : public testing::Test {
 protected:
  ASlowApplication() : device(Options()) {}
  ~ASlowApplication() override {
    EXPECT_TRUE(device.agent.Connected());
    EXPECT_FALSE(device.HasLogged("has ended"));
  }

  static snmp::AgentOptions Options() {
    snmp::AgentOptions options = Device::Options();
    options.responseTimeout = kResponseTimeout;
    options.timeout = 1s;
    return options;
  }
  static void TakeTooLong() {
    std::this_thread::sleep_for(kResponseTimeout + 200ms);
  }

  Device device;
  snmp::Module module{device.agent, kBase};
  snmp::Notification notification{module, "0.1"};
};

TEST_F(ASlowApplication, IsToldOfASessionBeforeItsModulesAreRegistered) {
  device.agent.OnSession([](const snmp::SessionEvent& event) {
    if (event.connected) TakeTooLong();
  });
  device.Connect();
  device.Sync();
}

TEST_F(ASlowApplication, SendsANotificationBeforeItGoesOn) {
  const snmp::Scalar scalar(module, "1", [this] {
    notification.Send();
    TakeTooLong();
    return 1;
  });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  EXPECT_EQ(device.Master().TakeNotifications().size(), 1U);
  device.Sync();
}

// What wakes the agent's thread, before it waits for the lock, is a deadline.
TEST_F(ASlowApplication, HoldsTheLockWhenTheResponseComes) {
  std::optional<snmp::Later<int>> kept;
  const snmp::Scalar scalar(
      module, "1", [&](const snmp::Later<int>& later) { kept.emplace(later); });
  device.Connect();
  const auto get = device.Send(wire::Get{{{Id("1.0"), false, {}}}});
  ASSERT_TRUE(Eventually([&] {
    const auto lock = device.agent.Lock();
    return kept.has_value();
  }));
  {
    const auto lock = device.agent.Lock();
    std::this_thread::sleep_for(1s);
    notification.Send();
    device.Master().Grant(device.Master().Next());
    TakeTooLong();
  }
  EXPECT_EQ(device.Receive(get), "genErr 1");
  device.Sync();
}

}  // namespace
