// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableNode.h"

#include <memory>
#include <type_traits>

#include "NetSNMPDataNode.h"
#include "support/Layout.h"
#include "support/TableTest.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TableNode : public TableTest {};

TEST_F(TableNode, IsANodeThatKeepsWhatItIsGiven) {
  subAgent_.SetConnected(false);
  const auto callback = [](NetSNMPDataNode*) {};
  const auto* const table = BuildTable(kPortTableOid, "portTable",
                                       eNodeAccessWriteOnly, callback, "alarm");
  EXPECT_EQ(Oid(table->NodeOID(), table->NodeOID() + table->NodeOIDLen()),
            kPortTableOid);
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("portTable"), table);
  EXPECT_EQ(table->accessData_.accessMode_, eNodeAccessWriteOnly);
  EXPECT_EQ(table->trapCallback_, +callback);
  EXPECT_EQ(table->trapName_, "alarm");
  EXPECT_FALSE(table->registered_);
  EXPECT_FALSE(table->iteratorRegistered_);
  EXPECT_EQ(table->handlerRegistration_, nullptr);
  EXPECT_EQ(table->iteratorInfo_, nullptr);
  EXPECT_EQ(table->entryNode_, nullptr);
}

TEST_F(TableNode, MayBeBuiltFromTheOneThatItReplaces) {
  const auto* const older = BuildTable(kPortTableOid, "portTable",
                                       eNodeAccessReadOnly, nullptr, "alarm");
  const auto* const newer = new NetSNMPTableNode(
      older->NodeOID(), older->NodeOIDLen(), older->nodeName_,
      older->accessData_, older->trapCallback_, older->trapName_);
  EXPECT_EQ(Oid(newer->NodeOID(), newer->NodeOID() + newer->NodeOIDLen()),
            kPortTableOid);
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("portTable"), newer);
  EXPECT_EQ(newer->accessData_.accessMode_, eNodeAccessReadOnly);
  EXPECT_EQ(newer->trapName_, "alarm");
}

TEST_F(TableNode, PassesRowsOnToItsStore) {
  auto* const table = BuildPortTable();
  auto* const store = BuildPortStore(table);
  EXPECT_TRUE(table->AddRow(Port(1, 2, 10)));
  EXPECT_FALSE(table->AddRow(Values(Int(1))));
  EXPECT_EQ(table->GetRow("port.1.2"), store->GetRow("port.1.2"));
  EXPECT_NE(table->GetRow("port.1.2"), nullptr);
  EXPECT_EQ(table->GetRow("port.9.9"), nullptr);
  std::string key;
  EXPECT_EQ(table->GetRowName(Port(3, 4, 10), key), 2);
  EXPECT_EQ(key, "port.3.4");
  EXPECT_TRUE(table->RemoveRow("port.1.2"));
  EXPECT_FALSE(table->RemoveRow("port.1.2"));
  EXPECT_EQ(store->GetRow("port.1.2"), nullptr);
}

TEST_F(TableNode, HasNoRowsWithoutAStore) {
  auto* const table = BuildPortTable();
  std::string key = "unchanged";
  EXPECT_FALSE(table->AddRow(Port(1, 2, 10)));
  EXPECT_FALSE(table->RemoveRow("port.1.2"));
  EXPECT_EQ(table->GetRow("port.1.2"), nullptr);
  EXPECT_EQ(table->GetRowName(Port(1, 2, 10), key), 0);
  EXPECT_EQ(key, "unchanged");
}

TEST_F(TableNode, KeepsItsFirstStore) {
  auto* const table = BuildPortTable();
  auto* const first = BuildPortStore(table);
  log_.Lines();
  auto* const second = BuildStore("second", Values(Int(0)), 9, table);
  EXPECT_EQ(table->entryNode_, first);
  table->TableEntryNode(second);
  table->TableEntryNode(nullptr);
  EXPECT_EQ(table->entryNode_, first);
  delete second;
  EXPECT_EQ(table->entryNode_, first);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(TableNode, IsLeftByAStoreThatIsDestroyed) {
  auto* const table = BuildPortTable();
  delete BuildPortStore(table);
  EXPECT_EQ(table->entryNode_, nullptr);
  EXPECT_FALSE(table->AddRow(Port(1, 2, 10)));
  auto* const successor = BuildStore("next", Values(Int(0), Int(0)), 5, table);
  EXPECT_EQ(table->entryNode_, successor);
  EXPECT_TRUE(table->AddRow(Port(1, 2, 10)));
}

TEST_F(TableNode, LeavesItsStoreToTheApplication) {
  auto* const table = BuildPortTable();
  auto* const store = BuildPortStore(table);
  delete table;
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("portStore"), store);
  EXPECT_TRUE(store->AddRow(Port(1, 2, 10)));
  delete store;
}

TEST_F(TableNode, MayShareItsStoreWithAnother) {
  for (const bool storeFirst : {true, false}) {
    auto* const table = BuildPortTable();
    auto* const other = BuildTable(TestOid({3}), "otherTable");
    auto* const store = BuildPortStore(table);
    other->TableEntryNode(store);
    EXPECT_EQ(other->entryNode_, store);
    EXPECT_TRUE(other->AddRow(Port(1, 2, 10)));
    EXPECT_NE(table->GetRow("port.1.2"), nullptr);
    if (storeFirst) {
      delete store;
      EXPECT_EQ(table->entryNode_, nullptr);
      EXPECT_EQ(other->entryNode_, nullptr);
    } else {
      delete table;
      EXPECT_EQ(other->entryNode_, store);
    }
    NetSNMPNode::DeleteNodes();
  }
}

TEST_F(TableNode, HasItsBasesAndFieldsInTheirFixedOrder) {
  const auto* const table = BuildPortTable();
  EXPECT_TRUE(LieInOrder(
      {static_cast<const NetSNMPNode*>(table), &table->mapped_,
       static_cast<const NetSNMPTrapTrigger*>(table), &table->trapName_,
       &table->accessData_, &table->handlerRegistration_, &table->iteratorInfo_,
       &table->entryNode_, &table->iteratorRegistered_}));
  EXPECT_EQ(static_cast<const void*>(static_cast<const NetSNMPNode*>(table)),
            table);
}

TEST_F(TableNode, HasNoVirtualOperationsBeyondThoseOfANode) {
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::UnregisterNode), 4);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::RegisterEntryNode), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::TableEntryNode), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::AddRow), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::RemoveRow), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::GetRow), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPTableNode::GetRowName), -1);
}

TEST_F(TableNode, IsDeletedWholeThroughEitherBase) {
  NetSNMPTrapTrigger* const trigger = BuildPortTable();
  delete trigger;
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

TEST_F(TableNode, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPTableNode>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPTableNode>::value);
}

}  // namespace
