// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/LateRegistrations.h"

#include <stdexcept>

#include "adapter/LateWithdrawals.h"
#include "support/DataNodeTest.h"
#include "support/PduInHand.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ANodeInHand : public DataNodeTest {
 protected:
  ~ANodeInHand() override { late_registrations::CatchUp(); }

  bool IsRegistered() const {
    return LocalAgent::RegistrationAt(kFanSpeedOid) != nullptr;
  }

  // Whether its withdrawal is put off.
  bool IsNoted() const {
    return late_withdrawals::IsNoted(kFanSpeedOid.data(), Length(kFanSpeedOid));
  }

  // Deletes it while a PDU names it.
  void DeleteInHand() {
    NetSNMPNode* const node = BuildFanSpeed();
    const PduInHand pdu(kFanSpeedOid);
    delete node;
    late_registrations::CatchUp();
    EXPECT_TRUE(IsRegistered());
    EXPECT_TRUE(IsNoted());
  }
};

TEST_F(ANodeInHand, IsWithdrawnAfterwards) {
  DeleteInHand();
  late_registrations::CatchUp();
  EXPECT_FALSE(IsRegistered());
  EXPECT_FALSE(IsNoted());
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
  late_withdrawals::DropNoted();
  EXPECT_FALSE(IsNoted());
  late_registrations::CatchUp();
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInHand, IsSucceededByTheNodeBuiltLastOnly) {
  DeleteInHand();
  EXPECT_FALSE(BuildFanSpeed()->registered_);
  delete NetSNMPNode::nodeMap_->at("fanSpeed");
  EXPECT_FALSE(Build(kFanSpeedOid, "last",
                     NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly))
                   ->registered_);
  late_registrations::CatchUp();
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
  late_registrations::CatchUp();
  EXPECT_THAT(log_.Lines(),
              ElementsAre(HasSubstr("not today"), HasSubstr("successful")));
  EXPECT_TRUE(NetSNMPNode::nodeMap_->at("successor")->registered_);
}

}  // namespace
