// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/Deferred.h"

#include <stdexcept>
#include <string>

#include "support/DataNodeTest.h"
#include "support/PduInHand.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ANodeInHand : public DataNodeTest {
 protected:
  ~ANodeInHand() override { deferred::Run(); }

  bool IsRegistered() const {
    return LocalAgent::RegistrationAt(kFanSpeedOid) != nullptr;
  }

  // Whether its withdrawal is deferred.
  bool IsDeferred() const {
    return deferred::WhenFree(kFanSpeedOid.data(), Length(kFanSpeedOid), "",
                              [](const std::string&) {});
  }

  // Deletes it while a PDU names it.
  void DeleteInHand() {
    NetSNMPNode* const node = BuildFanSpeed();
    const PduInHand pdu(kFanSpeedOid);
    delete node;
    deferred::Run();
    EXPECT_TRUE(IsRegistered());
    EXPECT_TRUE(IsDeferred());
  }
};

TEST_F(ANodeInHand, IsWithdrawnAfterwards) {
  DeleteInHand();
  deferred::Run();
  EXPECT_FALSE(IsRegistered());
  EXPECT_FALSE(IsDeferred());
}

TEST_F(ANodeInHand, LogsItsWithdrawalWhenItIsDeleted) {
  NetSNMPNode* const node = BuildFanSpeed();
  const PduInHand pdu(kFanSpeedOid);
  log_.Lines();
  delete node;
  EXPECT_THAT(log_.Lines(),
              ElementsAre(FanSpeedLine(
                  "Net-SNMP data node unregistration was successful.")));
}

TEST_F(ANodeInHand, OfAPduBelowAnotherIsInHandToo) {
  NetSNMPNode* const node = BuildFanSpeed();
  Build(kOtherOid, "other", NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  const PduInHand outer(kFanSpeedOid);
  const PduInHand inner(kOtherOid);
  delete node;
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInHand, IsNotWithdrawnFromAnAgentLibraryThatWasShutDown) {
  DeleteInHand();
  deferred::Drop();
  EXPECT_FALSE(IsDeferred());
  deferred::Run();
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInHand, IsSucceededByTheNodeBuiltLastOnly) {
  DeleteInHand();
  EXPECT_FALSE(BuildFanSpeed()->registered_);
  delete NetSNMPNode::nodeMap_->at("fanSpeed");
  EXPECT_FALSE(Build(kFanSpeedOid, "last",
                     NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly))
                   ->registered_);
  deferred::Run();
  EXPECT_TRUE(NetSNMPNode::nodeMap_->at("last")->registered_);
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInHand, IsSucceededAlthoughAnotherThrowsWhenItIsRegistered) {
  class Thrower : public NetSNMPDataNode {
   public:
    using NetSNMPDataNode::NetSNMPDataNode;
    bool RegisterNode() override { throw std::runtime_error("not today"); }
  };
  DeleteInHand();
  Oid oid = kFanSpeedOid;
  new Thrower(oid.data(), Length(oid), "a thrower",
              NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly), nullptr, "");
  Build(kFanSpeedOid, "successor",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  log_.Lines();
  deferred::Run();
  EXPECT_THAT(log_.Lines(),
              ElementsAre(HasSubstr("not today"), HasSubstr("successful")));
  EXPECT_TRUE(NetSNMPNode::nodeMap_->at("successor")->registered_);
}

}  // namespace
