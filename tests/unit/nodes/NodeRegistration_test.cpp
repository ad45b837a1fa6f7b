// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <stdexcept>
#include <string>

#include "adapter/Deferred.h"
#include "support/DataNodeTest.h"
#include "support/ServedPdu.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ANodeInUse : public DataNodeTest {
 protected:
  ~ANodeInUse() override { deferred::Run(); }

  bool IsRegistered() const {
    return LocalAgent::RegistrationAt(kFanSpeedOid) != nullptr;
  }

  // Whether its withdrawal is deferred.
  bool IsDeferred() const {
    return deferred::WhenFree(kFanSpeedOid.data(), Length(kFanSpeedOid), "",
                              [](const std::string&) {});
  }

  // Deletes it while a PDU addresses it.
  void DeleteInUse() {
    NetSNMPNode* const node = BuildFanSpeed();
    const ServedPdu pdu(kFanSpeedOid);
    delete node;
    deferred::Run();
    EXPECT_TRUE(IsRegistered());
    EXPECT_TRUE(IsDeferred());
  }
};

TEST_F(ANodeInUse, IsWithdrawnAfterwards) {
  DeleteInUse();
  deferred::Run();
  EXPECT_FALSE(IsRegistered());
  EXPECT_FALSE(IsDeferred());
}

TEST_F(ANodeInUse, LogsItsWithdrawalWhenItIsDeleted) {
  NetSNMPNode* const node = BuildFanSpeed();
  const ServedPdu pdu(kFanSpeedOid);
  log_.Lines();
  delete node;
  EXPECT_THAT(log_.Lines(),
              ElementsAre(FanSpeedLine(
                  "Net-SNMP data node unregistration was successful.")));
}

TEST_F(ANodeInUse, OfAPduBelowAnotherIsInUseToo) {
  NetSNMPNode* const node = BuildFanSpeed();
  Build(kOtherOid, "other", NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  const ServedPdu outer(kFanSpeedOid);
  const ServedPdu inner(kOtherOid);
  delete node;
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInUse, IsNotWithdrawnFromAnAgentLibraryThatWasShutDown) {
  DeleteInUse();
  deferred::Drop();
  EXPECT_FALSE(IsDeferred());
  deferred::Run();
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInUse, IsSucceededByTheNodeBuiltLastOnly) {
  DeleteInUse();
  EXPECT_FALSE(BuildFanSpeed()->registered_);
  delete NetSNMPNode::nodeMap_->at("fanSpeed");
  EXPECT_FALSE(Build(kFanSpeedOid, "last",
                     NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly))
                   ->registered_);
  deferred::Run();
  EXPECT_TRUE(NetSNMPNode::nodeMap_->at("last")->registered_);
  EXPECT_TRUE(IsRegistered());
}

TEST_F(ANodeInUse, IsSucceededAlthoughAnotherThrowsWhenItIsRegistered) {
  class Thrower : public NetSNMPDataNode {
   public:
    using NetSNMPDataNode::NetSNMPDataNode;
    bool RegisterNode() override { throw std::runtime_error("not today"); }
  };
  DeleteInUse();
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
