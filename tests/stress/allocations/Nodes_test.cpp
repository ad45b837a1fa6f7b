// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <string>

#include "FailingNew.h"
#include "NetSNMPDataSetTableNode.h"
#include "NetSNMPTrapNode.h"
#include "nodes/LateRegistrations.h"
#include "support/DataNodeTest.h"
#include "support/KeptDataSets.h"
#include "support/PduInHand.h"
#include "support/Request.h"
#include "support/Values.h"

namespace {

// Nothing is half done: what the registry has is registered, and the agent
// library knows nothing else.
class ANode : public DataNodeTest {
 protected:
  // Its lines are made and dropped: keeping them would count.
  ANode() {
    NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {};
  }

  static NetSNMPNode* Find(const std::string& name) {
    const auto found = NetSNMPNode::nodeMap_->find(name);
    return found == NetSNMPNode::nodeMap_->end() ? nullptr : found->second;
  }

  void ExpectConsistentFanSpeed() const {
    const auto* const node =
        dynamic_cast<const NetSNMPDataNode*>(Find("fanSpeed"));
    const auto* const registration = LocalAgent::RegistrationAt(kFanSpeedOid);
    if (node == nullptr) {
      EXPECT_EQ(registration, nullptr);
    } else {
      EXPECT_EQ(node->nodeName_, "fanSpeed");
      EXPECT_EQ(node->handlerRegistration_, registration);
      EXPECT_EQ(node->registered_, registration != nullptr);
    }
  }

  static constexpr char kLongText[] = "a text too long to lie inline";
};

TEST_F(ANode, OfAScalarIsBuiltWholeOrNotAtAll) {
  WithEachAllocationFailing([&](const auto& fail) {
    fail([&] {
      Oid oid = kFanSpeedOid;
      Build(oid, "fanSpeed", Text(kLongText), nullptr, kLongText);
    });
    ExpectConsistentFanSpeed();
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  });
}

TEST_F(ANode, TakesThePlaceOfAnotherWholeOrNotAtAll) {
  // The older node's copy of the OID stays, on purpose; see NetSNMPNode.
  for (int number = 1;; ++number) {
    BuildFanSpeed();
    bool happened = false;
    {
      const AllocationFailure failure(number);
      try {
        BuildFanSpeed();
      } catch (const std::bad_alloc&) {
      }
      happened = failure.Happened();
    }
    ExpectConsistentFanSpeed();
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
    if (!happened) break;
  }
}

TEST_F(ANode, IsRegisteredAndUnregisteredWholeOrNotAtAll) {
  WithEachAllocationFailing([&](const auto& fail) {
    subAgent_.SetConnected(false);
    BuildFanSpeed();
    subAgent_.SetConnected(true);
    fail([] { NetSNMPNode::RegisterMibs(); });
    ExpectConsistentFanSpeed();
    NetSNMPNode::DeleteNodes();
  });
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    fail([] { NetSNMPNode::ReregisterMibs(); });
    ExpectConsistentFanSpeed();
    NetSNMPNode::DeleteNodes();
  });
}

TEST_F(ANode, IsDestroyedWithoutMemory) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    Build(kOtherOid, "other", Text(kLongText));
    fail([] { NetSNMPNode::DeleteNodes(); });
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
    EXPECT_EQ(LocalAgent::RegistrationAt(kOtherOid), nullptr);
  });
}

// One whose withdrawal cannot even be deferred stays registered.
TEST_F(ANode, IsDestroyedWithoutMemoryWhileARequestAddressesIt) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    {
      const PduInHand pdu(kFanSpeedOid);
      fail([] { NetSNMPNode::DeleteNodes(); });
      NetSNMPNode::DeleteNodes();
      EXPECT_NE(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
    }
    Oid oid = kFanSpeedOid;
    const bool noted = late_withdrawals::IsNoted(oid.data(), Length(oid));
    late_registrations::CatchUp();
    EXPECT_EQ(LocalAgent::RegistrationAt(oid) == nullptr, noted);
    if (!noted) NetSNMP::unregister_snmp_mib(oid.data(), Length(oid));
  });
}

TEST_F(ANode, AnswersARequestOrFailsIt) {
  const int kModes[] = {MODE_GET, MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                        MODE_SET_ACTION, MODE_SET_COMMIT};
  WithEachAllocationFailing([&](const auto& fail) {
    Build(kFanSpeedOid, "fanSpeed", Text(kLongText, eNodeAccessReadWrite));
    for (const int mode : kModes) {
      Request request(kFanSpeedOid, mode);
      request.SetInteger(7);
      fail([&] { request.Serve(LocalAgent::RegistrationAt(kFanSpeedOid)); });
    }
    NetSNMPNode::DeleteNodes();
  });
}

TEST_F(ANode, OfATrapIsBuiltAndFiredOrNot) {
  WithEachAllocationFailing([&](const auto& fail) {
    NetSNMPDataNode* const object =
        Build(kFanSpeedOid, "fanSpeed", Text(kLongText), nullptr, kLongText);
    fail([&] {
      Oid oid = kOtherOid;
      auto* const trap =
          new NetSNMPTrapNode(oid.data(), Length(oid), kLongText);
      trap->AddDataObject(object);
      trap->TriggerV2Trap();
      object->DataNodeTrapTrigger();
    });
    NetSNMPNode::DeleteNodes();
  });
}

TEST_F(ANode, OfADataSetTableIsBuiltAndFilledOrNot) {
  // The agent library keeps a dataset that was registered: one for each turn.
  const KeptDataSets kept;
  unsigned long number = 0;
  WithEachAllocationFailing([&](const auto& fail) {
    Oid oid = TestOid({3, ++number});
    fail([&] {
      auto* const table = new NetSNMPDataSetTableNode(
          oid.data(), Length(oid), kLongText,
          NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr,
                          nullptr),
          Values(Unsigned(0), Text("")));
      table->AddRow(Values(Unsigned(1), Text(kLongText)));
    });
    NetSNMPNode::DeleteNodes();
  });
}

}  // namespace
