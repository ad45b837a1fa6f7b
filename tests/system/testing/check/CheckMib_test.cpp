// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/CheckMib.h"

#include <gtest/gtest.h>
#include <snmpsubagent/testing.h>
#include <stdlib.h>

#include <string>

#include "irrigation/Irrigation.h"

namespace {

namespace snmp = snmpsubagent;

constexpr char kModule[] = "IRRIGATION-EXAMPLE-MIB";

// Folders of this tree: the program's, and that of the MIB.
class CheckOfAMib : public testing::Test {
 protected:
  CheckOfAMib() {
    const std::string path = CHECK_FOLDER ":" + std::string(getenv("PATH"));
    setenv("PATH", path.c_str(), 1);
    options_.mibs = {EXAMPLE_MIBS};
  }

  snmp::testing::Master master_;
  snmp::Agent agent_{"irrigation", {master_.Address()}};
  snmp::testing::CheckOptions options_;
};

TEST_F(CheckOfAMib, FindsNothingInAServiceThatConforms) {
  const Irrigation irrigation(agent_);
  agent_.Start();
  master_.WaitForRegistrations(1);
  const auto conformance = CheckMib(master_, kModule, options_);
  EXPECT_TRUE(conformance.conforms) << conformance;
}

TEST_F(CheckOfAMib, ServesAnAgentOnTheThreadOfTheTestMeanwhile) {
  const Irrigation irrigation(agent_);
  const snmp::testing::Loop loop(agent_);
  master_.WaitForRegistrations(1);
  const auto conformance = CheckMib(master_, kModule, options_);
  EXPECT_TRUE(conformance.conforms) << conformance;
}

TEST_F(CheckOfAMib, FindsNothingAtSnmpdEither) {
  snmp::testing::Snmpd snmpd;
  snmp::Agent agent("irrigation", {snmpd.Address()});
  const Irrigation irrigation(agent);
  agent.Start();
  snmpd.WaitUntilServed("1.3.6.1.4.1.32473");
  const auto conformance = CheckMib(snmpd, kModule, options_);
  EXPECT_TRUE(conformance.conforms) << conformance;
}

TEST_F(CheckOfAMib, NamesWhatIsMissing) {
  const auto conformance = CheckMib(master_, kModule, options_);
  EXPECT_FALSE(conformance.conforms);
  EXPECT_NE(conformance.report.find("irrigationPressure"), std::string::npos)
      << conformance;
}

TEST_F(CheckOfAMib, ThrowsWhatKeepsItFromChecking) {
  try {
    CheckMib(master_, "NO-SUCH-MIB", options_);
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("NO-SUCH-MIB"), std::string::npos)
        << error.what();
  }
}

}  // namespace
