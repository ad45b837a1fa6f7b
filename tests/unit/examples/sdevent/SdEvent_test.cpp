// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>
#include <snmpsubagent/testing.h>

#include "objects_sd_event/Seconds.h"

namespace {

class TheSdEventExample : public testing::Test {
 protected:
  TheSdEventExample() {
    sd_event_new(&loop_);
    seconds_.emplace(agent_, loop_);
    kit_.Watch(sd_event_get_fd(loop_), [this] { sd_event_run(loop_, 0); });
    master_.WaitForRegistrations(1);
  }
  ~TheSdEventExample() override { sd_event_unref(loop_); }

  sd_event* loop_ = nullptr;
  snmp::testing::Master master_;
  snmp::Agent agent_{"example", {master_.Address()}};
  std::optional<Seconds> seconds_;
  snmp::testing::Loop kit_;
};

TEST_F(TheSdEventExample, ServesManagersInItsLoop) {
  using snmp::testing::ErrorStatus;
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.3.22.1.0"), 0);
  EXPECT_EQ(master_.Set("1.3.6.1.4.1.32473.3.22.2.0", 30),
            ErrorStatus::NoError);
  EXPECT_EQ(master_.Get("1.3.6.1.4.1.32473.3.22.2.0"), 30);
}

}  // namespace
