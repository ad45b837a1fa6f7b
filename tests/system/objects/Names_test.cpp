// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Names at the limits: sub-identifiers of 32 bits, OIDs of 128 sub-identifiers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Served.h"

using testing::ElementsAre;

namespace {

TEST(ASubIdentifier, OfUpTo32BitsNamesAnObject) {
  Served served;
  std::vector<snmp::Scalar<int>> scalars;
  const std::vector<std::string> oids{"0.1", "2147483647", "2147483648",
                                      "4294967294", "4294967295"};
  for (const std::string& oid : oids) {
    scalars.emplace_back(served.module, oid, 7, snmp::ReadWrite());
  }
  served.Start();
  std::vector<std::string> walked;
  for (const std::string& oid : oids) {
    EXPECT_EQ(served.Shown(oid), "INTEGER: 7");
    EXPECT_EQ(served.Set({Served::Name(oid), "i", "8"}), "None");
    walked.push_back(Served::Name(oid) + " = INTEGER: 8");
  }
  EXPECT_EQ(
      served.master.Manager().Objects(std::string(".") + Served::kSubtree),
      walked);
}

TEST(AnOid, Of128SubIdentifiersNamesAnObject) {
  Served served;
  std::string longest = "1";  // behind 9 of the module, in front of the 0
  for (int i = 0; i < 117; ++i) longest += ".2147483647";
  snmp::Scalar<int> scalar(served.module, longest, 7, snmp::ReadWrite());
  served.Start();
  EXPECT_EQ(served.Shown(longest), "INTEGER: 7");
  EXPECT_EQ(served.Set({Served::Name(longest), "i", "8"}), "None");
  EXPECT_THAT(
      served.master.Manager().Objects(std::string(".") + Served::kSubtree),
      ElementsAre(Served::Name(longest) + " = INTEGER: 8"));
}

// Of one above, snmpd registers another: it takes sub-identifiers of a
// registration for signed ones.
TEST(AModule, WhoseSubtreeEndsIn2147483647IsServed) {
  const testkit::MasterAgent master;
  snmp::Agent agent("the tests", OptionsFor(AddressOf(master)));
  snmp::Module module(agent, "1.3.6.1.4.1.32473.2147483647");
  const snmp::Scalar scalar(module, "1", 7);
  agent.Start();
  ASSERT_TRUE(WaitUntilRegistered(module));
  EXPECT_EQ(ShownAt(master.Manager(), ".1.3.6.1.4.1.32473.2147483647.1.0"),
            "INTEGER: 7");
}

}  // namespace
