// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPNode.h"

#include <gmock/gmock.h>

#include <memory>
#include <type_traits>

#include "support/Layout.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

std::vector<unsigned long> OidOf(const NetSNMPNode& node) {
  return {node.NodeOID(), node.NodeOID() + node.NodeOIDLen()};
}

// Records its name when it is destroyed.
class MortalNode : public NetSNMPNode {
 public:
  MortalNode(Oid oid, const std::string& name, std::vector<std::string>& grave)
      : NetSNMPNode(oid.data(), Length(oid), name), grave_(grave) {}
  ~MortalNode() override { grave_.push_back(nodeName_); }

 private:
  std::vector<std::string>& grave_;
};

// Counts how often its virtual slot Initialize() is entered, and keeps the OID
// copies that it found there.
class CountingNode : public NetSNMPNode {
 public:
  CountingNode(Oid oid, const std::string& name)
      : NetSNMPNode(oid.data(), Length(oid), name) {}

  void Initialize(unsigned long* oid, unsigned int oidLen) override {
    copies_.emplace_back(nodeOID_);
    NetSNMPNode::Initialize(oid, oidLen);
  }

  std::vector<std::unique_ptr<unsigned long[]>> copies_;
};

TEST(TheNodeStatics, AreZeroAtLoad) {
  EXPECT_EQ(NetSNMPNode::nodeMap_, nullptr);
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, nullptr);
  EXPECT_EQ(NetSNMPNode::NodeMsgLogger_, nullptr);
  EXPECT_EQ(NetSNMPNode::NodeMsgLogType_, 0U);
}

TEST(ANode, KeepsItsNameAndItsOwnCopyOfTheOid) {
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), Length(oid), "fanSpeed");
  const Oid given = oid;
  oid.assign(oid.size(), 0);
  EXPECT_EQ(node.NodeName(), "fanSpeed");
  EXPECT_EQ(node.NodeOIDLen(), given.size());
  EXPECT_THAT(OidOf(node), ElementsAreArray(given));
}

TEST(ANode, TakesAnOidOfAnyLength) {
  Oid oid = LongOid(300);
  const NetSNMPNode node(oid.data(), Length(oid), "long");
  EXPECT_THAT(OidOf(node), ElementsAreArray(oid));
}

TEST(ANode, HasNoOidAndStaysOutsideTheRegistryWhenTheOidIsEmpty) {
  const ScopedRegistry registry;
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), 0, "empty");
  EXPECT_EQ(node.NodeOID(), nullptr);
  EXPECT_EQ(node.NodeOIDLen(), 0U);
  EXPECT_FALSE(node.mapped_);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST(ANode, EntersTheRegistryUnderItsNameUnregistered) {
  const ScopedRegistry registry;
  Oid oid = TestOid({1, 0});
  auto* const node = new NetSNMPNode(oid.data(), Length(oid), "fanSpeed");
  EXPECT_TRUE(node->mapped_);
  EXPECT_FALSE(node->registered_);
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(testing::Pair("fanSpeed", node)));
}

TEST(ANode, StaysOutsideARegistryThatIsMadeAfterIt) {
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), Length(oid), "early");
  const ScopedRegistry registry;
  EXPECT_FALSE(node.mapped_);
  EXPECT_FALSE(node.registered_);
  EXPECT_THAT(OidOf(node), ElementsAreArray(oid));
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST(ANode, LeavesTheRegistryWhenItIsDestroyed) {
  const ScopedRegistry registry;
  Oid oid = TestOid({1, 0});
  const auto node =
      std::make_unique<NetSNMPNode>(oid.data(), Length(oid), "other");
  {
    const NetSNMPNode brief(oid.data(), Length(oid), "brief");
    EXPECT_EQ(NetSNMPNode::nodeMap_->size(), 2U);
  }
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(testing::Pair("other", node.get())));
}

TEST(ANode, OutsideTheRegistryLeavesTheEntryOfItsNamesakeAlone) {
  Oid oid = TestOid({1, 0});
  auto outside = std::make_unique<NetSNMPNode>(oid.data(), Length(oid), "twin");
  const ScopedRegistry registry;
  auto* const inside = new NetSNMPNode(oid.data(), Length(oid), "twin");
  outside.reset();
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(testing::Pair("twin", inside)));
}

TEST(ANode, DestroysTheOlderNodeOfItsNameAtOnceAndSilently) {
  const ScopedRegistry registry;
  NodeLog log;
  std::vector<std::string> grave;
  new MortalNode(TestOid({1, 0}), "twin", grave);
  auto* const newer = new MortalNode(TestOid({2, 0}), "twin", grave);
  EXPECT_THAT(grave, ElementsAre("twin"));
  EXPECT_TRUE(newer->mapped_);
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(testing::Pair("twin", newer)));
  EXPECT_THAT(log.Lines(), IsEmpty());
  NetSNMPNode::DeleteNodes();
}

TEST(ANode, TakesThePlaceOfANullEntry) {
  const ScopedRegistry registry;
  NetSNMPNode::nodeMap_->emplace("hole", nullptr);
  Oid oid = TestOid({1, 0});
  auto* const node = new NetSNMPNode(oid.data(), Length(oid), "hole");
  EXPECT_TRUE(node->mapped_);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, ElementsAre(testing::Pair("hole", node)));
}

TEST(ANode, EntersItsVirtualInitializeAgainWhenItsNameWasTaken) {
  auto* const late = new CountingNode(TestOid({1, 0}), "twin");
  const ScopedRegistry registry;
  std::vector<std::string> grave;
  new MortalNode(TestOid({2, 0}), "twin", grave);
  Oid oid = TestOid({3, 0});
  late->Initialize(oid.data(), Length(oid));
  EXPECT_THAT(grave, ElementsAre("twin"));
  EXPECT_TRUE(late->mapped_);
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("twin"), late);
  // The constructor's copy was found first and then the first copy of the
  // call, which is not released either.
  ASSERT_EQ(late->copies_.size(), 2U);
  EXPECT_EQ(late->copies_[0][7], 1U);
  EXPECT_EQ(late->copies_[1][7], 3U);
  EXPECT_THAT(OidOf(*late), ElementsAreArray(oid));
}

TEST(ANode, CopiesNothingOfAnEmptyOid) {
  Oid oid = TestOid({1, 0});
  NetSNMPNode node(oid.data(), Length(oid), "node");
  const unsigned long* const before = node.NodeOID();
  EXPECT_EQ(node.CopyOID(oid.data(), 0), 0U);
  EXPECT_EQ(node.NodeOID(), before);
}

TEST(ANode, CopiesAnOidWithoutReleasingTheFormerCopy) {
  Oid oid = TestOid({1, 0});
  NetSNMPNode node(oid.data(), Length(oid), "node");
  const std::unique_ptr<unsigned long[]> former(node.NodeOID());
  Oid other = TestOid({2, 0});
  EXPECT_EQ(node.CopyOID(other.data(), Length(other)), other.size());
  EXPECT_THAT(OidOf(node), ElementsAreArray(other));
  EXPECT_EQ(former[7], 1U);
}

struct CopyCase {
  unsigned int sourceLength;
  unsigned int room;
  std::vector<unsigned long> result;
};

TEST(CopyOid, CopiesOnlyAnOidForWhichThereIsRoom) {
  const CopyCase cases[] = {
      {3, 2, {0, 0, 0}}, {2, 2, {1, 2, 0}}, {3, 3, {1, 2, 3}},
      {2, 3, {1, 2, 0}}, {0, 3, {0, 0, 0}}, {0, 0, {0, 0, 0}},
  };
  for (const CopyCase& each : cases) {
    unsigned long source[] = {1, 2, 3};
    std::vector<unsigned long> destination(3, 0);
    NetSNMPNode::CopyOID(source, each.sourceLength, destination.data(),
                         each.room);
    EXPECT_EQ(destination, each.result)
        << each.sourceLength << " into " << each.room;
  }
}

TEST(ANode, LogsUnderItsNameWithTheLevelThatIsSet) {
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), Length(oid), "fanSpeed");
  NodeLog log;
  for (const unsigned int level : {0U, 3U, 4711U}) {
    NetSNMPNode::NodeMsgLogType_ = level;
    node.NodeLogMessage("Net-SNMP data node registration failed.");
    EXPECT_THAT(log.Lines(),
                ElementsAre("SNMP: Node = fanSpeed; Net-SNMP data node "
                            "registration failed."));
    EXPECT_EQ(NodeLog::Level(), level);
  }
}

TEST(ANode, LogsNothingWithoutALogger) {
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), Length(oid), "fanSpeed");
  NodeLog log;
  NetSNMPNode::NodeMsgLogger_ = nullptr;
  node.NodeLogMessage("dropped");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(ANode, HasNothingToRegister) {
  const ScopedRegistry registry;
  NodeLog log;
  Oid oid = TestOid({1, 0});
  NetSNMPNode node(oid.data(), Length(oid), "plain");
  EXPECT_FALSE(node.RegisterNode());
  node.registered_ = true;
  EXPECT_FALSE(node.RegisterNode());
  node.UnregisterNode();
  EXPECT_TRUE(node.registered_);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(ANode, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPNode>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPNode>::value);
}

TEST(ANode, HasItsFieldsInTheirFixedOrder) {
  Oid oid = TestOid({1, 0});
  const NetSNMPNode node(oid.data(), Length(oid), "node");
  EXPECT_TRUE(LieInOrder({&node, &node.nodeOID_, &node.nodeOIDLen_,
                          &node.nodeName_, &node.registered_, &node.mapped_}));
}

TEST(ANode, HasItsVirtualOperationsInTheirFixedSlots) {
  // Slots 0 and 1 are the destructor's.
  EXPECT_TRUE(std::has_virtual_destructor<NetSNMPNode>::value);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::NodeLogMessage), 2);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::UnregisterNode), 4);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::NodeOID), 5);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::NodeOIDLen), 6);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::NodeName), 7);
  EXPECT_EQ(VirtualSlot(&NetSNMPNode::Initialize), 8);
}

}  // namespace
