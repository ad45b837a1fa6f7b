// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeRegistry.h"
#include "support/Scalars.h"
#include "support/TestSubAgent.h"
#include "testkit/MasterAgent.h"
#include "testkit/TrapReceiver.h"

using support::AddIntScalar;
using support::NodeRegistry;
using support::ScalarOid;
using support::ScalarsOid;
using support::TestSubAgent;
using testing::EndsWith;
using testkit::MasterAgent;
using testkit::TrapReceiver;

namespace {

std::string TrapOid() { return ScalarsOid() + ".0.1"; }

// What a receiver shows of a trap with these objects, behind the time.
std::string Shown(const std::string& objects) {
  return ".1.3.6.1.6.3.1.1.4.1.0 = OID: " + TrapOid() + "; " + objects;
}

class ATrap : public testing::Test {
 protected:
  ATrap() : subAgent_(master_.AgentXPort()) {
    std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 99, 0, 1};
    trap_ = new NetSNMPTrapNode(oid.data(), oid.size(), "alarm");
    EXPECT_TRUE(subAgent_.StartAndConnect());
  }

  ~ATrap() override { subAgent_.Stop(); }

  // Builds a writable scalar that fires the trap.
  void AddFiringScalar() {
    std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 99, 1, 0};
    new NetSNMPDataNode(oid.data(), oid.size(), "firing",
                        NetSNMPIntNodeData(&number_, eNodeAccessReadWrite),
                        nullptr, "alarm");
  }

  int number_ = 1;
  TrapReceiver receiver_;
  MasterAgent master_{receiver_.SinkConfiguration()};
  TestSubAgent subAgent_;
  NodeRegistry registry_;
  NetSNMPTrapNode* trap_;
};

TEST_F(ATrap, CarriesTheObjectsThatWereAddedInTheirOrder) {
  trap_->AddDataObject(AddIntScalar(2, "second", 20));
  trap_->AddDataObject(AddIntScalar(1, "first", 10));
  EXPECT_TRUE(trap_->TriggerV2Trap());
  ASSERT_TRUE(receiver_.WaitForCount(1));
  EXPECT_THAT(receiver_.Received()[0],
              EndsWith(Shown(ScalarOid(2) + " = INTEGER: 20; " + ScalarOid(1) +
                             " = INTEGER: 10")));
}

TEST_F(ATrap, IsSentTwiceWhenTheApplicationSetsAValue) {
  AddFiringScalar();
  NetSNMPDataNode::SetNodeData("firing", 5);
  ASSERT_TRUE(receiver_.WaitForCount(2));
  for (const std::string& received : receiver_.Received())
    EXPECT_THAT(received, EndsWith(Shown(ScalarOid(1) + " = INTEGER: 5")));
}

TEST_F(ATrap, IsSentTwiceWhenAManagerSetsAValue) {
  AddFiringScalar();
  EXPECT_TRUE(master_.Manager().Set({ScalarOid(1), "i", "6"}).Succeeded());
  ASSERT_TRUE(receiver_.WaitForCount(2));
  for (const std::string& received : receiver_.Received())
    EXPECT_THAT(received, EndsWith(Shown(ScalarOid(1) + " = INTEGER: 6")));
}

TEST_F(ATrap, IsNotSentWithoutAnObject) {
  EXPECT_FALSE(trap_->TriggerV2Trap());
  EXPECT_TRUE(trap_->TriggerV2Trap(AddIntScalar(1, "object", 1)));
  ASSERT_TRUE(receiver_.WaitForCount(1));
  EXPECT_EQ(receiver_.Received().size(), 1U);
}

}  // namespace
