// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FailingNew.h"
#include "support/ServedTableTest.h"

namespace {

class ATableWithoutMemory : public ServedTableTest {
 protected:
  // Its lines are made and dropped: keeping them would count.
  ATableWithoutMemory() {
    NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {};
  }
};

TEST_F(ATableWithoutMemory, IsBuiltWholeOrNotAtAll) {
  NetSNMPNode::DeleteNodes();
  WithEachAllocationFailing([&](const auto& fail) {
    fail([&] { BuildPortStore(BuildPortTable())->AddRow(Port(1, 2, 3)); });
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  });
}

TEST_F(ATableWithoutMemory, IsDestroyedWithoutMemory) {
  NetSNMPNode::DeleteNodes();
  WithEachAllocationFailing([&](const auto& fail) {
    BuildPortStore(BuildPortTable())->AddRow(Port(1, 2, 3));
    fail([] { NetSNMPNode::DeleteNodes(); });
    NetSNMPNode::DeleteNodes();
    EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  });
}

TEST_F(ATableWithoutMemory, TakesARowOrStaysAsItIs) {
  WithEachAllocationFailing([&](const auto& fail) {
    AddSlot(1, 1, 5);
    const bool added = fail([&] { AddSlot(1, 2, 6); });
    const bool replaced = fail([&] { AddSlot(1, 1, 7); });
    std::vector<std::string> expected = {"3.1.1 = " +
                                         std::to_string(replaced ? 7 : 5)};
    if (added) expected.emplace_back("3.1.2 = 6");
    EXPECT_EQ(Walk(), expected);
    store_->RemoveRow("port.1.1");
    store_->RemoveRow("port.1.2");
  });
}

TEST_F(ATableWithoutMemory, HandsOutAndLosesItsRowsOrStaysAsItIs) {
  WithEachAllocationFailing([&](const auto& fail) {
    AddSlot(1, 1, 5);
    AddSlot(1, 10, 6);
    AddSlot(1, 2, 7);
    fail([&] { store_->GetRow("port.1.1"); });
    fail([&] { store_->GetFirstRow(); });
    fail([&] { store_->RemoveRow("port.1.10"); });
    store_->RemoveRow("port.1.10");
    EXPECT_EQ(WalkedRows(), (std::vector<std::string>{"1.1", "1.2"}));
    store_->RemoveRow("port.1.1");
    store_->RemoveRow("port.1.2");
  });
}

TEST_F(ATableWithoutMemory, AnswersARequestOrFailsIt) {
  AddSlot(1, 1, 5);
  AddSlot(1, 2, 6);
  WithEachAllocationFailing([&](const auto& fail) {
    for (const int mode : {MODE_GET, MODE_GETNEXT}) {
      CellRequest request(CellOid(3, 1, 1));
      fail([&] { Serve(request, mode); });
    }
  });
  EXPECT_EQ(WalkedRows(), (std::vector<std::string>{"1.1", "1.2"}));
}

TEST_F(ATableWithoutMemory, CarriesOutASetOrFailsIt) {
  int number = 5;
  NetSNMPIntNodeData cell(&number, eNodeAccessReadWrite);
  ASSERT_TRUE(store_->AddRow(Values(Index(Int(1)), Index(Unsigned(1)), cell)));
  WithEachAllocationFailing([&](const auto& fail) {
    CellRequest request(CellOid(3, 1, 1));
    request.SetInteger(6);
    fail([&] {
      for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                             MODE_SET_ACTION, MODE_SET_COMMIT}) {
        Serve(request, mode);
      }
    });
  });
  EXPECT_EQ(NetSNMPNode::nodeMap_->count("port.1.1"), 0U);
  EXPECT_EQ(WalkedRows(), (std::vector<std::string>{"1.1"}));
}

}  // namespace
