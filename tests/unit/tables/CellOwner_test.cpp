// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <boost/thread.hpp>
#include <stdexcept>

#include "CellTest.h"
#include "CountedValue.h"
#include "NetSNMPDataNode.h"
#include "adapter/ExceptionBarrier.h"
#include "support/EventfulValue.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;

void FailToRead(const NetSNMPNodeData&) {
  throw std::runtime_error("sensor lost");
}
void FailToWrite(const NetSNMPNodeData&) { throw 42; }

// The scalar that owns a cell while it is served.
class CellOwner : public CellTest {
 protected:
  // Puts another value into the speed column.
  void AddPortWith(const NetSNMPNodeData& speed) {
    store_->AddRow(Values(Index(Int(1)), Index(Unsigned(2)), speed));
  }

  int GetSpeedFrom(NetSNMPTableNode& table, StoredRow* row) {
    CellRequest request(CellOid(3, 1, 2));
    request.Choose(row, 3);
    const int status = request.HandleAs(table.NodeName(), MODE_GET);
    EXPECT_EQ(request.Status(), status);
    EXPECT_EQ(request.Processed(), status != SNMP_ERR_NOERROR);
    return status;
  }

  int GetSpeed() { return GetSpeedFrom(*table_, PortRow()); }
  int SetSpeed(long speed) { return SpeedSet(PortRow(), speed).Commit(); }
};

TEST_F(CellOwner, StandsInTheRegistryUnderTheRowKeyMeanwhile) {
  int seen = 0;
  AddPortWith(EventfulValue(10, [&](const NetSNMPNodeData& value) {
    const auto* const owner =
        dynamic_cast<NetSNMPDataNode*>(NetSNMPNode::nodeMap_->at("port.1.2"));
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(value.ownerNode_, owner);
    EXPECT_NE(owner->nodeData_, &value);
    EXPECT_EQ(Oid(owner->NodeOID(), owner->NodeOID() + owner->NodeOIDLen()),
              CellOid(3, 1, 2));
    EXPECT_NE(owner->trapCallback_, nullptr);
    EXPECT_EQ(owner->trapName_, "portAlarm");
    EXPECT_FALSE(owner->registered_);
    EXPECT_EQ(LocalAgent::RegistrationAt(CellOid(3, 1, 2)), nullptr);
    ++seen;
  }));
  EXPECT_EQ(GetSpeed(), SNMP_ERR_NOERROR);
  EXPECT_EQ(seen, 1);
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(Key("portStore"), Key("portTable")));
}

TEST_F(CellOwner, DestroysAScalarOfItsName) {
  for (const int mode : std::vector<int>{MODE_GET, MODE_GETNEXT,
                                         MODE_SET_RESERVE1, MODE_SET_ACTION}) {
    Oid oid = TestOid({1, 1, 0});
    new NetSNMPDataNode(oid.data(), Length(oid), "port.1.2", Int(7), nullptr,
                        "");
    ASSERT_NE(LocalAgent::RegistrationAt(oid), nullptr);
    SpeedSet request(PortRow(), 20);
    EXPECT_EQ(request.HandleAs("portTable", mode), SNMP_ERR_NOERROR);
    EXPECT_EQ(NetSNMPNode::nodeMap_->count("port.1.2"), 0U);
    EXPECT_EQ(LocalAgent::RegistrationAt(oid), nullptr);
  }
}

TEST_F(CellOwner, SparesAnotherScalarWhenThereIsNoSuchCell) {
  Oid oid = TestOid({1, 1, 0});
  auto* const scalar = new NetSNMPDataNode(oid.data(), Length(oid), "port.1.2",
                                           Int(7), nullptr, "");
  CellRequest request(CellOid(6, 1, 2));
  request.Choose(PortRow(), 6);
  request.HandleAs("portTable", MODE_GET);
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("port.1.2"), scalar);
}

TEST_F(CellOwner, SparesTheTableBeingServed) {
  auto* const table = BuildTable(TestOid({3}), "port.1.2");
  BuildStore("otherStore", Values(Int(0), Unsigned(0)), 5, table)
      ->AddRow(Port(1, 2, 10));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(GetSpeedFrom(*table, table->GetRow("port.1.2")),
              SNMP_ERR_NOERROR);
    EXPECT_EQ(NetSNMPNode::nodeMap_->at("port.1.2"), table);
    EXPECT_TRUE(table->mapped_);
  }
  EXPECT_EQ(LocalAgent::RegistrationAt(TestOid({3})),
            table->handlerRegistration_);
}

TEST_F(CellOwner, SparesTheStoreBeingServed) {
  auto* const table = BuildTable(TestOid({3}), "otherTable");
  auto* const store =
      BuildStore("port.1.2", Values(Int(0), Unsigned(0)), 5, table);
  store->AddRow(Port(1, 2, 10));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(GetSpeedFrom(*table, table->GetRow("port.1.2")),
              SNMP_ERR_NOERROR);
    EXPECT_EQ(NetSNMPNode::nodeMap_->at("port.1.2"), store);
  }
}

TEST_F(CellOwner, DestroysAnotherTableOfItsName) {
  BuildTable(TestOid({3}), "port.1.2");
  EXPECT_EQ(GetSpeed(), SNMP_ERR_NOERROR);
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(Key("portStore"), Key("portTable")));
}

TEST_F(CellOwner, AnswersGenErrAndLogsWhenAValueThrows) {
  AddPortWith(EventfulValue(10, FailToRead, FailToWrite));
  EXPECT_EQ(GetSpeed(), SNMP_ERR_GENERR);
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre(PortTableLine("Exception in a callback: sensor lost")));
  EXPECT_EQ(SetSpeed(20), SNMP_ERR_GENERR);
  EXPECT_THAT(log_.Lines(),
              ElementsAre("SNMP: Node = port.1.2; Node Data = 20; data value "
                          "set.",
                          PortTableLine(
                              "Exception of an unknown type in a callback.")));
  EXPECT_THAT(*NetSNMPNode::nodeMap_,
              ElementsAre(Key("portStore"), Key("portTable")));
}

TEST_F(CellOwner, AnswersGenErrWhenMemoryRunsOut) {
  AddPortWith(CountedValue(10));
  int clones = 0;
  for (int status = SNMP_ERR_GENERR; status != SNMP_ERR_NOERROR; ++clones) {
    const CloneLimit limit(clones);
    status = GetSpeed();
    EXPECT_EQ(CountedValue::Alive(), 1) << "clone " << clones;
    if (status != SNMP_ERR_NOERROR) {
      EXPECT_EQ(status, SNMP_ERR_GENERR);
      EXPECT_THAT(log_.Lines(),
                  ElementsAre(PortTableLine("Exception in a callback: "
                                            "std::bad_alloc")));
    }
  }
  EXPECT_GT(clones, 2);
}

TEST_F(CellOwner, ServesTheOtherCellsWhenOneThrows) {
  ASSERT_TRUE(store_->AddRow(Values(Index(Int(1)), Index(Unsigned(3)),
                                    EventfulValue(10, FailToRead))));
  CellRequest throwing(CellOid(3, 1, 3));
  throwing.Choose(store_->GetRow("port.1.3"), 3);
  CellRequest sound(CellOid(3, 1, 2));
  sound.Choose(PortRow(), 3);
  throwing.Append(sound);
  EXPECT_EQ(throwing.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(throwing.Status(), SNMP_ERR_GENERR);
  EXPECT_EQ(sound.Status(), SNMP_ERR_NOERROR);
  EXPECT_EQ(sound.Integer(), 10);
}

TEST_F(CellOwner, AnswersGenErrWhenTheLoggerThrowsToo) {
  AddPortWith(EventfulValue(10, FailToRead));
  NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {
    throw std::runtime_error("disk full");
  };
  EXPECT_EQ(GetSpeed(), SNMP_ERR_GENERR);
  EXPECT_EQ(SetSpeed(20), SNMP_ERR_GENERR);
  NetSNMPNode::NodeMsgLogger_ = nullptr;
}

TEST_F(CellOwner, RemembersAnInterruption) {
  AddPortWith(EventfulValue(
      10, [](const NetSNMPNodeData&) { throw boost::thread_interrupted(); }));
  EXPECT_EQ(GetSpeed(), SNMP_ERR_GENERR);
  EXPECT_THROW(exception_barrier::RaisePendingInterruption(),
               boost::thread_interrupted);
}

TEST_F(CellOwner, SurvivesAValueThatRemovesItsRow) {
  const auto remove = [this](const NetSNMPNodeData&) {
    store_->RemoveRow("port.1.2");
  };
  AddPortWith(EventfulValue(10, EventfulValue::DoNothing, remove));
  EXPECT_EQ(SetSpeed(20), SNMP_ERR_NOERROR);
  EXPECT_EQ(PortRow(), nullptr);
  AddPortWith(EventfulValue(10, remove));
  EXPECT_EQ(GetSpeed(), SNMP_ERR_NOERROR);
  EXPECT_EQ(PortRow(), nullptr);
}

TEST_F(CellOwner, SurvivesAValueThatDeletesIt) {
  AddPortWith(EventfulValue(
      10, EventfulValue::DoNothing,
      [](const NetSNMPNodeData& value) { delete value.ownerNode_; }));
  EXPECT_EQ(SetSpeed(20), SNMP_ERR_NOERROR);
  EXPECT_EQ(NetSNMPNode::nodeMap_->count("port.1.2"), 0U);
}

}  // namespace
