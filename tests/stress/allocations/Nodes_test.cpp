// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <deque>
#include <string>

#include "FailingNew.h"
#include "NetSNMPDataSetTableNode.h"
#include "NetSNMPTrapNode.h"
#include "adapter/Deferred.h"
#include "adapter/InUse.h"
#include "support/DataNodeTest.h"
#include "support/KeptDataSets.h"
#include "support/Request.h"
#include "support/ServedPdu.h"
#include "support/Values.h"

namespace {

// Nothing is half done: what the registry has is registered, and the agent
// library knows nothing else.
class ANodeWithoutMemory : public DataNodeTest {
 protected:
  // Its lines are made and dropped: keeping them would count.
  ANodeWithoutMemory() {
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

TEST_F(ANodeWithoutMemory, OfAScalarIsBuiltWholeOrNotAtAll) {
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

TEST_F(ANodeWithoutMemory, TakesThePlaceOfAnotherWholeOrNotAtAll) {
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

TEST_F(ANodeWithoutMemory, IsRegisteredAndUnregisteredWholeOrNotAtAll) {
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

TEST_F(ANodeWithoutMemory, IsDestroyedWithoutMemory) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    Build(kOtherOid, "other", Text(kLongText));
    fail([] { NetSNMPNode::DeleteNodes(); });
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
    EXPECT_EQ(LocalAgent::RegistrationAt(kOtherOid), nullptr);
  });
}

// Deferring the withdrawal needs no memory.
TEST_F(ANodeWithoutMemory, IsDestroyedWithoutMemoryWhileARequestAddressesIt) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    {
      const ServedPdu pdu(kFanSpeedOid);
      EXPECT_TRUE(fail([] { NetSNMPNode::DeleteNodes(); }));
      EXPECT_NE(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
    }
    deferred::Run();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  });
}

// A SET as far as it is tracked.
class TrackedSet {
 public:
  explicit TrackedSet(const netsnmp_handler_registration* registration)
      : registration_(registration) {
    requestInfo_.asp = &session_;
  }

  bool Pass(int mode) {
    requestInfo_.mode = mode;
    return in_use::TrackSet(&requestInfo_, &requests_, registration_);
  }

  int Error() const { return requests_.status; }

 private:
  const netsnmp_handler_registration* const registration_;
  netsnmp_agent_session session_{};
  netsnmp_agent_request_info requestInfo_{};
  netsnmp_request_info requests_{};
};

TEST_F(ANodeWithoutMemory, IsDestroyedWithoutMemoryDuringASet) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    auto* const registration = LocalAgent::RegistrationAt(kFanSpeedOid);
    TrackedSet set(registration);
    ASSERT_TRUE(set.Pass(MODE_SET_RESERVE1));
    EXPECT_TRUE(fail([] { NetSNMPNode::DeleteNodes(); }));
    deferred::Run();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), registration);
    set.Pass(MODE_SET_FREE);
    deferred::Run();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  });
}

TEST_F(ANodeWithoutMemory, RefusesASetThatThereIsNoMemoryToTrack) {
  std::deque<TrackedSet> sets;
  bool tracked = true;
  while (tracked && sets.size() < 1000) {
    TrackedSet& set = sets.emplace_back(nullptr);
    const AllocationFailure failure(1);
    tracked = set.Pass(MODE_SET_RESERVE1);
    EXPECT_EQ(set.Error(),
              tracked ? SNMP_ERR_NOERROR : SNMP_ERR_RESOURCEUNAVAILABLE);
  }
  EXPECT_FALSE(tracked);
  in_use::ForgetSets();
}

TEST_F(ANodeWithoutMemory, IsDestroyedWithoutMemoryWhileItIsRegistered) {
  WithEachAllocationFailing([&](const auto& fail) {
    BuildFanSpeed();
    auto* const registration = LocalAgent::RegistrationAt(kFanSpeedOid);
    EXPECT_TRUE(fail([&] {
      in_use::BeginRegistering(registration);
      in_use::BeginRegistering(nullptr);
      NetSNMPNode::DeleteNodes();
    }));
    in_use::EndRegistering(nullptr);
    deferred::Run();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), registration);
    in_use::EndRegistering(registration);
    deferred::Run();
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  });
}

TEST_F(ANodeWithoutMemory, AnswersARequestOrFailsIt) {
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

TEST_F(ANodeWithoutMemory, OfATrapIsBuiltAndFiredOrNot) {
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

TEST_F(ANodeWithoutMemory, OfADataSetTableIsBuiltAndFilledOrNot) {
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
