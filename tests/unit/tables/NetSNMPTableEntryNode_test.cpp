// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableEntryNode.h"

#include <type_traits>

#include "CountedValue.h"
#include "support/Layout.h"
#include "support/LockWitness.h"
#include "support/TableTest.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TableEntryNode : public TableTest {};

TEST_F(TableEntryNode, IsANodeThatKeepsWhatItIsGiven) {
  const auto* const store = BuildPortStore(nullptr);
  EXPECT_EQ(Oid(store->NodeOID(), store->NodeOID() + store->NodeOIDLen()),
            TestOid({2, 1}));
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("portStore"), store);
  EXPECT_EQ(store->rowNamePrefix_, "port");
  EXPECT_EQ(store->columnCount_, 5U);
  EXPECT_EQ(store->tableNode_, nullptr);
  EXPECT_THAT(store->rows_, IsEmpty());
}

TEST_F(TableEntryNode, KeepsClonesOfItsIndexTemplate) {
  const NetSNMPTableEntryNode* store = nullptr;
  {
    const Values indexTemplate(Int(3), CountedValue(7));
    store = BuildStore("portStore", indexTemplate, 5, nullptr);
    EXPECT_EQ(CountedValue::Alive(), 2);
  }
  ASSERT_THAT(store->indexTemplate_, SizeIs(2));
  EXPECT_EQ(*static_cast<int*>(store->indexTemplate_[0]->NodeDataValue()), 3);
  EXPECT_EQ(*static_cast<int*>(store->indexTemplate_[1]->NodeDataValue()), 7);
  delete store;
  EXPECT_EQ(CountedValue::Alive(), 0);
}

TEST_F(TableEntryNode, AttachesItselfToItsTable) {
  auto* const table = BuildPortTable();
  auto* const store = BuildPortStore(table);
  EXPECT_EQ(store->tableNode_, table);
  EXPECT_EQ(table->entryNode_, store);
}

TEST_F(TableEntryNode, MayBeBuiltFromTheOneThatItReplaces) {
  auto* const table = BuildPortTable();
  const auto* const older = BuildPortStore(table);
  auto* const newer = new NetSNMPTableEntryNode(
      older->NodeOID(), older->NodeOIDLen(), older->nodeName_,
      older->rowNamePrefix_, older->indexTemplate_, older->columnCount_,
      older->tableNode_);
  EXPECT_EQ(Oid(newer->NodeOID(), newer->NodeOID() + newer->NodeOIDLen()),
            TestOid({2, 1}));
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("portStore"), newer);
  EXPECT_EQ(table->entryNode_, newer);
  EXPECT_TRUE(table->AddRow(Port(1, 2, 10)));
  EXPECT_NE(newer->GetRow("port.1.2"), nullptr);
}

TEST_F(TableEntryNode, TakesTheLockBeforeItCopiesItsIndexTemplate) {
  bool held = true;
  LockWitness index(held);
  BuildStore("portStore", {&index}, 2, nullptr);
  EXPECT_TRUE(held);
}

TEST_F(TableEntryNode, HasNothingToRegister) {
  auto* const store = BuildPortStore(nullptr);
  EXPECT_TRUE(store->RegisterNode());
  EXPECT_FALSE(store->registered_);
  EXPECT_EQ(LocalAgent::RegistrationAt(TestOid({2, 1})), nullptr);
  store->UnregisterNode();
  EXPECT_TRUE(store->RegisterNode());
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(TableEntryNode, OutsideTheRegistryIsNotRegistered) {
  const std::unique_ptr<NetSNMPTableEntryNode> withoutOid(
      new NetSNMPTableEntryNode(nullptr, 0, "noOid", "port", {}, 1, nullptr));
  EXPECT_FALSE(withoutOid->RegisterNode());
  EXPECT_TRUE(withoutOid->AddRow(Values(Int(1))));
}

TEST_F(TableEntryNode, DeletesItsRowsAndLeavesTheRegistryAtItsEnd) {
  auto* const store =
      BuildStore("portStore", Values(CountedValue(0)), 2, nullptr);
  for (const int number : {1, 2, 3}) {
    ASSERT_TRUE(
        store->AddRow(Values(Index(CountedValue(number)), CountedValue(0))));
  }
  EXPECT_EQ(CountedValue::Alive(), 7);
  delete store;
  EXPECT_EQ(CountedValue::Alive(), 0);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST_F(TableEntryNode, HasItsFieldsInTheirFixedOrder) {
  const auto* const store = BuildPortStore(nullptr);
  EXPECT_TRUE(
      LieInOrder({store, &store->mapped_, &store->rowNamePrefix_,
                  &store->columnCount_, &store->rows_, &store->rowCursor_,
                  &store->tableNode_, &store->indexTemplate_}));
  EXPECT_EQ(static_cast<const void*>(static_cast<const NetSNMPNode*>(store)),
            store);
}

TEST_F(TableEntryNode, HasNoVirtualOperationsBeyondThoseOfANode) {
  using Store = NetSNMPTableEntryNode;
  EXPECT_EQ(VirtualSlot(&Store::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&Store::GetRowName), -1);
  EXPECT_EQ(VirtualSlot(&Store::AddRow), -1);
  EXPECT_EQ(VirtualSlot(&Store::RemoveRow), -1);
  EXPECT_EQ(VirtualSlot(&Store::GetRow), -1);
  EXPECT_EQ(VirtualSlot(&Store::GetFirstRow), -1);
  EXPECT_EQ(VirtualSlot(&Store::GetNextRow), -1);
}

TEST_F(TableEntryNode, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPTableEntryNode>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPTableEntryNode>::value);
}

}  // namespace
