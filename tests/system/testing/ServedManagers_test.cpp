// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include "snmpsubagent/testing/Master.h"
#include "testkit/Manager.h"
#include "testkit/ScratchDirectory.h"

namespace {

namespace snmp = snmpsubagent;

// The command-line tools at a master agent in the process.
class ServedManagers : public testing::Test {
 protected:
  ServedManagers() {
    agent_.Start();
    master_.WaitForRegistrations(1);
  }

  snmp::testing::Master master_;
  snmp::Agent agent_{"thermometer", {master_.Address()}};
  snmp::Module module_{agent_, "1.3.6.1.4.1.32473.2"};
  snmp::Scalar<int> celsius_{module_, "1", -21,
                             snmp::ReadWrite().Range(-50, 90)};
  snmp::Scalar<std::string> place_{module_, "2", std::string(60000, 'x')};
  testkit::ScratchDirectory directory_;
  testkit::Manager tools_{master_.SnmpAddress(), directory_.Path()};
};

TEST_F(ServedManagers, GetWhatThereIs) {
  const auto result = tools_.Get("1.3.6.1.4.1.32473.2.1.0");
  EXPECT_EQ(result.out, ".1.3.6.1.4.1.32473.2.1.0 = INTEGER: -21\n") << result;
}

TEST_F(ServedManagers, WalkInBulk) {
  const auto lines = tools_.BulkWalk("1.3.6.1.4.1.32473.2").Lines();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0], ".1.3.6.1.4.1.32473.2.1.0 = INTEGER: -21");
  EXPECT_NE(lines[2].find("No more variables left"), std::string::npos);
}

TEST_F(ServedManagers, AreToldWhatIsRefused) {
  const auto result = tools_.Set({"1.3.6.1.4.1.32473.2.1.0", "i", "91"});
  EXPECT_NE(result.error.find("wrongValue"), std::string::npos) << result;
}

TEST_F(ServedManagers, AreToldWhatIsTooBig) {
  const auto result = tools_.Run(
      "snmpget", {"1.3.6.1.4.1.32473.2.2.0", "1.3.6.1.4.1.32473.2.2.0"});
  EXPECT_NE(result.error.find("tooBig"), std::string::npos) << result;
}

}  // namespace
