// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <ostream>

#include "NetSNMPDataNode.h"
#include "support/TableTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kUnregistered[] =
    "Net-SNMP table node unregistration was successful.";
constexpr char kNotUnregistered[] =
    "Net-SNMP table node unregistration failed.";
constexpr char kDisconnected[] =
    "Net-SNMP table node unregistration could not complete- disconnected "
    "subagent.";
constexpr char kRegistered[] =
    "Net-SNMP table node registration was successful.";

// What becomes of a registration when the table goes.
class TableWithdrawal : public TableTest {
 protected:
  TableWithdrawal() { log_.Lines(); }

  static bool IsVisible() {
    return LocalAgent::RegistrationAt(TestOid({2})) != nullptr;
  }

  // Whose handlers the agent library would give a request for `oid` to.
  static std::string ServerOf(const Oid& oid) {
    return netsnmp_subtree_find(oid.data(), oid.size(), nullptr, "")
        ->reginfo->handlerName;
  }

  // The log lines of the table since the last call.
  std::vector<std::string> Logged() { return log_.Lines(); }

  NetSNMPTableNode* const table_ = BuildPortTable();
  NetSNMPTableEntryNode* const store_ = BuildPortStore(table_);
};

TEST_F(TableWithdrawal, IsDoneByUnregistering) {
  table_->UnregisterNode();
  EXPECT_FALSE(table_->registered_);
  EXPECT_EQ(table_->handlerRegistration_, nullptr);
  EXPECT_TRUE(table_->iteratorRegistered_);
  EXPECT_NE(table_->iteratorInfo_, nullptr);
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kUnregistered)));
  table_->UnregisterNode();
  EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(TableWithdrawal, IsForGood) {
  for (int round = 0; round < 2; ++round) {
    table_->UnregisterNode();
    log_.Lines();
    EXPECT_TRUE(table_->RegisterNode());
    EXPECT_NE(table_->handlerRegistration_, nullptr);
    EXPECT_FALSE(IsVisible());
    EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kRegistered)));
  }
  table_->RegisterEntryNode();
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(TableWithdrawal, ByReregisterMibsIsForGoodToo) {
  NetSNMPNode::ReregisterMibs();
  EXPECT_TRUE(table_->registered_);
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kUnregistered),
                                    PortTableLine(kRegistered)));
}

TEST_F(TableWithdrawal, FailsForATableThatWasNeverVisible) {
  auto* const unseen = BuildTable(TestOid({3}), "portTable");
  log_.Lines();
  unseen->UnregisterNode();
  EXPECT_FALSE(unseen->registered_);
  EXPECT_EQ(unseen->handlerRegistration_, nullptr);
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kNotUnregistered)));
}

TEST_F(TableWithdrawal, LeavesTheRegistrationOfAStrangerAlone) {
  table_->UnregisterNode();
  table_->RegisterNode();
  Oid oid = kPortTableOid;
  const auto* const stranger = new NetSNMPDataNode(
      oid.data(), Length(oid), "stranger", Int(1), nullptr, "");
  log_.Lines();
  table_->UnregisterNode();
  delete table_;
  EXPECT_EQ(LocalAgent::RegistrationAt(oid), stranger->handlerRegistration_);
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kNotUnregistered)));
}

TEST_F(TableWithdrawal, WaitsWhileTheSubagentIsDisconnected) {
  for (const bool absent : {false, true}) {
    subAgent_.SetConnected(false);
    if (absent) NetSNMPNode::snmpSubAgent_ = nullptr;
    table_->UnregisterNode();
    EXPECT_FALSE(table_->registered_);
    EXPECT_EQ(table_->handlerRegistration_, nullptr);
    EXPECT_TRUE(IsVisible());
    EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kDisconnected)));
    NetSNMPNode::snmpSubAgent_ = &subAgent_;
    subAgent_.SetConnected(true);
    table_->RegisterNode();
    EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kRegistered)));
  }
  table_->UnregisterNode();
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kUnregistered)));
}

TEST_F(TableWithdrawal, IsDoneByTheDestructor) {
  delete table_;
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kUnregistered)));
}

TEST_F(TableWithdrawal, IsDoneByTheDestructorWhileDisconnected) {
  subAgent_.SetConnected(false);
  delete table_;
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kDisconnected)));
}

TEST_F(TableWithdrawal, IsDoneByTheDestructorWithoutASubagent) {
  NetSNMPNode::snmpSubAgent_ = nullptr;
  delete table_;
  EXPECT_FALSE(IsVisible());
  EXPECT_THAT(Logged(), ElementsAre(PortTableLine(kDisconnected)));
}

// The state of an unregistered table when it is destroyed.
struct LastState {
  const char* name;
  bool connectedAgain;
  bool registeredAgain;
  bool connectedAtLast;
};

std::ostream& operator<<(std::ostream& stream, const LastState& state) {
  return stream << state.name;
}

class ATableUnregisteredWhileDisconnected
    : public TableWithdrawal,
      public testing::WithParamInterface<LastState> {};

TEST_P(ATableUnregisteredWhileDisconnected, IsWithdrawnByTheDestructor) {
  subAgent_.SetConnected(false);
  table_->UnregisterNode();
  subAgent_.SetConnected(GetParam().connectedAgain);
  if (GetParam().registeredAgain) table_->RegisterNode();
  subAgent_.SetConnected(GetParam().connectedAtLast);
  EXPECT_EQ(table_->registered_, GetParam().registeredAgain);
  EXPECT_TRUE(IsVisible());
  delete table_;
  EXPECT_FALSE(IsVisible());
  BuildPortStore(BuildPortTable());
  subAgent_.SetConnected(true);
  NetSNMPNode::RegisterMibs();
  EXPECT_TRUE(IsVisible());
}

INSTANTIATE_TEST_SUITE_P(
    When, ATableUnregisteredWhileDisconnected,
    testing::Values(LastState{"StillDisconnected", false, false, false},
                    LastState{"ConnectedAgain", true, false, true},
                    LastState{"RegisteredAgain", true, true, true},
                    LastState{"RegisteredAgainAndLost", true, true, false}),
    testing::PrintToStringParamName());

// The agent library splits the range of a table around a node inside it.
TEST_F(TableWithdrawal, IsDoneWithAnotherNodeInsideTheTable) {
  for (const bool connected : {true, false}) {
    for (const bool insideFirst : {true, false}) {
      subAgent_.SetConnected(true);
      BuildPortStore(BuildPortTable());
      Oid oid = TestOid({2, 1, 3, 5});
      new NetSNMPDataNode(oid.data(), Length(oid), "inside", Int(1), nullptr,
                          "");
      ASSERT_EQ(ServerOf(oid), "inside");
      ASSERT_EQ(ServerOf(CellOid(4, 1, 1)), "portTable");
      subAgent_.SetConnected(connected);
      if (insideFirst) delete NetSNMPNode::nodeMap_->at("inside");
      delete NetSNMPNode::nodeMap_->at("portTable");
      for (const unsigned long column : {1, 3, 4}) {
        EXPECT_NE(ServerOf(CellOid(column, 1, 1)), "portTable");
      }
      subAgent_.SetConnected(true);
      NetSNMPNode::DeleteNodes();
      if (insideFirst && !connected) unregister_mib(oid.data(), oid.size());
    }
  }
}

TEST_F(TableWithdrawal, IsDoneInEitherOrderOfTableAndStore) {
  delete store_;
  EXPECT_TRUE(IsVisible());
  delete table_;
  EXPECT_FALSE(IsVisible());

  auto* const table = BuildPortTable();
  auto* const store = BuildPortStore(table);
  delete table;
  EXPECT_FALSE(IsVisible());
  delete store;
}

}  // namespace
