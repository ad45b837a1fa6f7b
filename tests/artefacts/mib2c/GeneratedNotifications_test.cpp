// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The notifications made of TEMPLATE-TEST-MIB.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "NetSNMPNode.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testNotifications.h"
#include "testScalars.h"
#include "testkit/MasterAgent.h"
#include "testkit/TrapReceiver.h"

using testing::EndsWith;

namespace {

constexpr char kMib[] = ".1.3.6.1.4.1.32473.98";

std::string TrapOid(int number) {
  return ".1.3.6.1.6.3.1.1.4.1.0 = OID: " + std::string(kMib) + ".0." +
         std::to_string(number);
}

class GeneratedNotifications : public testing::Test {
 protected:
  GeneratedNotifications() : subAgent_(master_.AgentXPort()) {
    BuildTestNotifications();
    EXPECT_TRUE(subAgent_.StartAndConnect());
  }
  ~GeneratedNotifications() override { subAgent_.Stop(); }

  // The notification that has arrived, alone.
  std::string Received() const {
    EXPECT_TRUE(receiver_.WaitForCount(1));
    const auto received = receiver_.Received();
    return received.size() == 1 ? received[0] : "";
  }

  TestScalars scalars_;
  testkit::TrapReceiver receiver_;
  testkit::MasterAgent master_{receiver_.SinkConfiguration()};
  support::TestSubAgent subAgent_;
  support::NodeRegistry registry_;
};

TEST_F(GeneratedNotifications, CarryScalarsOfNodesAndObjectsSentOnly) {
  BuildTestScalars(scalars_);
  scalars_.testText = "text";
  unsigned int sentOnly = 16;
  EXPECT_TRUE(SendTestOfScalars(
      NetSNMPUnsignedIntNodeData(&sentOnly, eNodeAccessReadOnly)));
  EXPECT_THAT(Received(), EndsWith(TrapOid(1) + "; " + kMib +
                                   ".1.9.0 = STRING: \"text\"; " + kMib +
                                   ".1.16.0 = Gauge32: 16"));
}

TEST_F(GeneratedNotifications, CarryTheColumnsOfARow) {
  std::string name = "four";
  unsigned int count = 44;
  EXPECT_TRUE(
      SendTestOfARow({4, 2}, NetSNMPStringNodeData(&name, eNodeAccessReadOnly),
                     NetSNMPCounter32NodeData(&count, eNodeAccessReadOnly)));
  EXPECT_THAT(Received(), EndsWith(TrapOid(2) + "; " + kMib +
                                   ".2.1.1.3.4.2 = STRING: \"four\"; " + kMib +
                                   ".2.1.1.7.4.2 = Counter32: 44"));
}

TEST_F(GeneratedNotifications, AreSentWithoutAnyObject) {
  EXPECT_TRUE(SendTestOfNothing());
  EXPECT_THAT(Received(), EndsWith(TrapOid(3)));
}

TEST_F(GeneratedNotifications, AreNotSentWithoutTheNodeOfAScalar) {
  unsigned int sentOnly = 16;
  EXPECT_FALSE(SendTestOfScalars(
      NetSNMPUnsignedIntNodeData(&sentOnly, eNodeAccessReadOnly)));
  EXPECT_TRUE(SendTestOfNothing());
  EXPECT_THAT(Received(), EndsWith(TrapOid(3)));
}

TEST_F(GeneratedNotifications, LeaveTheRegistryAsItWas) {
  const auto before = *NetSNMPNode::nodeMap_;
  std::string name = "four";
  unsigned int count = 44;
  SendTestOfARow({4, 2}, NetSNMPStringNodeData(&name, eNodeAccessReadOnly),
                 NetSNMPCounter32NodeData(&count, eNodeAccessReadOnly));
  EXPECT_EQ(*NetSNMPNode::nodeMap_, before);
}

}  // namespace
