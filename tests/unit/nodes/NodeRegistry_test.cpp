// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPNode.h"
#include "support/FakeSubAgent.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Journal = std::vector<std::string>;

// Records the calls, and calls a function of the test meanwhile.
class JournalNode : public NetSNMPNode {
 public:
  JournalNode(Journal& journal, const std::string& name,
              void (*duringRegistration)() = nullptr)
      : JournalNode(TestOid({1, 0}), journal, name, duringRegistration) {}

  ~JournalNode() override {
    const bool stillThere =
        nodeMap_ != nullptr && nodeMap_->count(nodeName_) != 0;
    journal_.push_back(
        nodeName_ + (stillThere ? " destroyed inside" : " destroyed outside"));
  }
  bool RegisterNode() override {
    journal_.push_back(nodeName_ + " registered");
    if (duringRegistration_ != nullptr) duringRegistration_();
    return false;
  }
  void UnregisterNode() override {
    journal_.push_back(nodeName_ + " unregistered");
  }

 private:
  JournalNode(Oid oid, Journal& journal, const std::string& name,
              void (*duringRegistration)())
      : NetSNMPNode(oid.data(), Length(oid), name),
        journal_(journal),
        duringRegistration_(duringRegistration) {}

  Journal& journal_;
  void (*duringRegistration_)();
};

void DestroyNodeB() { delete NetSNMPNode::nodeMap_->at("b"); }

// Destroys itself instead of unregistering.
class FleetingNode : public JournalNode {
 public:
  using JournalNode::JournalNode;
  void UnregisterNode() override { delete this; }
};

TEST(AbsentRegistry, HasNothingToRegisterOrDelete) {
  NetSNMPNode::RegisterMibs();
  NetSNMPNode::ReregisterMibs();
  EXPECT_EQ(NetSNMPNode::DeleteNodes(), 0);
  NetSNMPNode::DeleteNodeMap();
  EXPECT_EQ(NetSNMPNode::nodeMap_, nullptr);
}

TEST(AbsentRegistry, KeepsANodeFromBeingFoundOrRegistered) {
  const FakeSubAgent subAgent(true);
  NodeLog log;
  Oid oid = TestOid({1, 0});
  int speed = 7;
  const NetSNMPDataNode early(oid.data(), Length(oid), "early",
                              NetSNMPIntNodeData(&speed, eNodeAccessReadOnly),
                              nullptr, "");
  const ScopedRegistry registry;
  EXPECT_EQ(NetSNMPDataNode::GetNodeData("early"), nullptr);
  NetSNMPNode::RegisterMibs();
  EXPECT_FALSE(early.registered_);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(Registry, RegistersAllNodesInTheByteOrderOfTheirNames) {
  const ScopedRegistry registry;
  Journal journal;
  for (const char* name : {"port.2", "a", "\xC3\xA4", "Z", "port.10"}) {
    new JournalNode(journal, name);
  }
  NetSNMPNode::RegisterMibs();
  EXPECT_THAT(journal,
              ElementsAre("Z registered", "a registered", "port.10 registered",
                          "port.2 registered", "\xC3\xA4 registered"));
  NetSNMPNode::DeleteNodes();
}

TEST(Registry, ReregistersOneNodeAfterTheOther) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "b");
  new JournalNode(journal, "a");
  NetSNMPNode::ReregisterMibs();
  EXPECT_THAT(journal, ElementsAre("a unregistered", "a registered",
                                   "b unregistered", "b registered"));
  NetSNMPNode::DeleteNodes();
}

TEST(Registry, PassesOverNullEntries) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "b");
  NetSNMPNode::nodeMap_->emplace("a", nullptr);
  NetSNMPNode::nodeMap_->emplace("c", nullptr);
  NetSNMPNode::RegisterMibs();
  NetSNMPNode::ReregisterMibs();
  EXPECT_THAT(journal,
              ElementsAre("b registered", "b unregistered", "b registered"));
  NetSNMPNode::DeleteNodes();
}

TEST(Registry, GoesOnWhenARegistrationDestroysTheNextNode) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "a", DestroyNodeB);
  new JournalNode(journal, "b");
  new JournalNode(journal, "c");
  NetSNMPNode::RegisterMibs();
  EXPECT_THAT(journal, ElementsAre("a registered", "b destroyed inside",
                                   "c registered"));
  NetSNMPNode::DeleteNodes();
}

TEST(Registry, DoesNotReregisterANodeThatWentAwayUnregistering) {
  const ScopedRegistry registry;
  Journal journal;
  new FleetingNode(journal, "a");
  new JournalNode(journal, "b");
  NetSNMPNode::ReregisterMibs();
  EXPECT_THAT(journal, ElementsAre("a destroyed inside", "b unregistered",
                                   "b registered"));
  NetSNMPNode::DeleteNodes();
}

TEST(Registry, MayBeRemovedDuringARegistration) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "a", NetSNMPNode::DeleteNodeMap);
  new JournalNode(journal, "b");
  NetSNMPNode::RegisterMibs();
  EXPECT_THAT(journal, ElementsAre("a registered", "a destroyed outside",
                                   "b destroyed outside"));
  EXPECT_EQ(NetSNMPNode::nodeMap_, nullptr);
}

TEST(EmptyRegistry, HasNoNodesToDelete) {
  const ScopedRegistry registry;
  EXPECT_EQ(NetSNMPNode::DeleteNodes(), 0);
  EXPECT_NE(NetSNMPNode::nodeMap_, nullptr);
}

TEST(Registry, DestroysItsNodesInOrderEachAfterItsEntryHasGone) {
  const ScopedRegistry registry;
  Journal journal;
  for (const char* name : {"c", "a", "b"}) new JournalNode(journal, name);
  EXPECT_EQ(NetSNMPNode::DeleteNodes(), 3);
  EXPECT_THAT(journal, ElementsAre("a destroyed outside", "b destroyed outside",
                                   "c destroyed outside"));
  ASSERT_NE(NetSNMPNode::nodeMap_, nullptr);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST(Registry, CountsNullEntriesAsDeletedNodes) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "a");
  NetSNMPNode::nodeMap_->emplace("b", nullptr);
  EXPECT_EQ(NetSNMPNode::DeleteNodes(), 2);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST(Registry, IsGoneWithItsNodesAfterDeleteNodeMap) {
  const ScopedRegistry registry;
  Journal journal;
  new JournalNode(journal, "a");
  new JournalNode(journal, "b");
  NetSNMPNode::DeleteNodeMap();
  EXPECT_EQ(NetSNMPNode::nodeMap_, nullptr);
  EXPECT_THAT(journal,
              ElementsAre("a destroyed outside", "b destroyed outside"));
  NetSNMPNode::DeleteNodeMap();
  EXPECT_EQ(NetSNMPNode::nodeMap_, nullptr);
}

}  // namespace
