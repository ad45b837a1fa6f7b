// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/DataNodeTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kRegistered[] =
    "Net-SNMP data node registration was successful.";
constexpr char kNotRegistered[] = "Net-SNMP data node registration failed.";
constexpr char kUnregistered[] =
    "Net-SNMP data node unregistration was successful.";
constexpr char kNotUnregistered[] = "Net-SNMP data node unregistration failed.";
constexpr char kDisconnected[] =
    "Net-SNMP data node unregistration could not complete- disconnected "
    "subagent.";

class DataNodeRegistration : public DataNodeTest {
 protected:
  // A scalar built before the subagent was connected.
  NetSNMPDataNode* BuildEarlyFanSpeed() {
    subAgent_.SetConnected(false);
    auto* const node = BuildFanSpeed();
    subAgent_.SetConnected(true);
    return node;
  }

  static void ExpectUnregistered(const NetSNMPDataNode& node) {
    EXPECT_FALSE(node.registered_);
    EXPECT_EQ(node.handlerRegistration_, nullptr);
  }
};

TEST_F(DataNodeRegistration, IsMadeAtConstructionWhenConnected) {
  const auto* const node = BuildFanSpeed();
  EXPECT_TRUE(node->registered_);
  ASSERT_NE(node->handlerRegistration_, nullptr);
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid),
            node->handlerRegistration_);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kRegistered)));
}

TEST_F(DataNodeRegistration, NeedsNoMemoryForItsLine) {
  NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {
    throw std::bad_alloc();
  };
  auto* const node = BuildFanSpeed();
  EXPECT_TRUE(node->registered_);
  delete node;
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
}

TEST_F(DataNodeRegistration, NamesItsHandlerAfterTheNodeBehindTheInstance) {
  const auto* const node = BuildFanSpeed();
  std::vector<std::string> handlers;
  const netsnmp_mib_handler* last = nullptr;
  for (const auto* handler = node->handlerRegistration_->handler;
       handler != nullptr; handler = handler->next) {
    handlers.emplace_back(handler->handler_name);
    last = handler;
  }
  EXPECT_THAT(handlers, testing::Contains("instance"));
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(handlers.back(), "fanSpeed");
  EXPECT_EQ(last->access_method, var_instance_handler);
}

TEST_F(DataNodeRegistration, TakesItsModesFromTheAccessModeOfTheValue) {
  const std::pair<int, int> modes[] = {{0, HANDLER_CAN_DEFAULT},
                                       {1, HANDLER_CAN_RONLY},
                                       {2, HANDLER_CAN_RWRITE},
                                       {3, HANDLER_CAN_SET_ONLY},
                                       {9, HANDLER_CAN_DEFAULT}};
  for (const auto& each : modes) {
    const auto access = static_cast<eNodeAccessMode>(each.first);
    const auto* const node =
        Build(kFanSpeedOid, "fanSpeed", NetSNMPIntNodeData(&speed_, access));
    ASSERT_NE(node->handlerRegistration_, nullptr);
    EXPECT_EQ(node->handlerRegistration_->modes, each.second) << each.first;
    delete node;
  }
}

TEST_F(DataNodeRegistration, WaitsForTheSubagentToBeConnected) {
  auto* const node = BuildEarlyFanSpeed();
  subAgent_.SetConnected(false);
  EXPECT_FALSE(node->RegisterNode());
  ExpectUnregistered(*node);
  EXPECT_THAT(log_.Lines(), IsEmpty());
  subAgent_.SetConnected(true);
  NetSNMPNode::RegisterMibs();
  EXPECT_TRUE(node->registered_);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kRegistered)));
}

TEST_F(DataNodeRegistration, WaitsForASubagent) {
  NetSNMPNode::snmpSubAgent_ = nullptr;
  auto* const node = BuildFanSpeed();
  EXPECT_FALSE(node->RegisterNode());
  ExpectUnregistered(*node);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeRegistration, IsNotRepeated) {
  auto* const node = BuildFanSpeed();
  const auto* const registration = node->handlerRegistration_;
  log_.Lines();
  EXPECT_TRUE(node->RegisterNode());
  subAgent_.SetConnected(false);
  EXPECT_TRUE(node->RegisterNode());
  EXPECT_EQ(node->handlerRegistration_, registration);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeRegistration, IsOnlyForNodesOfTheRegistry) {
  auto* const node = BuildEarlyFanSpeed();
  NetSNMPNode::nodeMap_->erase("fanSpeed");
  node->mapped_ = false;
  EXPECT_FALSE(node->RegisterNode());
  ExpectUnregistered(*node);
  EXPECT_THAT(log_.Lines(), IsEmpty());
  delete node;
}

TEST_F(DataNodeRegistration, IsNotForCellsOfTables) {
  auto* const node = Build(
      kFanSpeedOid, "fanSpeed",
      NetSNMPIntNodeData(&speed_, eNodeAccessReadWrite, true, nullptr, true));
  EXPECT_FALSE(node->RegisterNode());
  ExpectUnregistered(*node);
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeRegistration, FailsForAnOidThatIsTaken) {
  auto* const first = BuildFanSpeed();
  log_.Lines();
  auto* const second = Build(kFanSpeedOid, "copy",
                             NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  ExpectUnregistered(*second);
  EXPECT_FALSE(second->RegisterNode());
  EXPECT_THAT(
      log_.Lines(),
      ElementsAre("SNMP: Node = copy; Net-SNMP data node registration failed.",
                  "SNMP: Node = copy; Net-SNMP data node registration "
                  "failed."));
  delete second;
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid),
            first->handlerRegistration_);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeRegistration, SucceedsOnceTheOidIsFree) {
  auto* const first = BuildFanSpeed();
  auto* const second = Build(kFanSpeedOid, "copy",
                             NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  delete first;
  EXPECT_TRUE(second->RegisterNode());
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid),
            second->handlerRegistration_);
}

TEST_F(DataNodeRegistration, IsRefusedBeyond128SubIdentifiers) {
  for (const unsigned int length : {129U, 255U, 256U, 257U, 300U}) {
    auto* const node = Build(LongOid(length), "fanSpeed",
                             NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
    ExpectUnregistered(*node);
    EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kNotRegistered)))
        << length;
    delete node;
  }
}

TEST_F(DataNodeRegistration, TakesUpTo128SubIdentifiers) {
  auto* const node = Build(LongOid(128), "fanSpeed",
                           NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_TRUE(node->registered_);
  EXPECT_EQ(LocalAgent::RegistrationAt(LongOid(128)),
            node->handlerRegistration_);
}

TEST_F(DataNodeRegistration, IsWithdrawnWhenConnected) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  node->UnregisterNode();
  ExpectUnregistered(*node);
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kUnregistered)));
  node->UnregisterNode();
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataNodeRegistration, IsLeftToTheAgentLibraryWhenDisconnected) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  subAgent_.SetConnected(false);
  node->UnregisterNode();
  ExpectUnregistered(*node);
  EXPECT_NE(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kDisconnected)));
}

TEST_F(DataNodeRegistration, IsLeftToTheAgentLibraryWithoutASubagent) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  NetSNMPNode::snmpSubAgent_ = nullptr;
  node->UnregisterNode();
  ExpectUnregistered(*node);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kDisconnected)));
}

TEST_F(DataNodeRegistration, IsLeftToTheAgentLibraryWhenTheNodeIsDestroyed) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  subAgent_.SetConnected(false);
  delete node;
  EXPECT_NE(LocalAgent::RegistrationAt(kFanSpeedOid), nullptr);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kDisconnected)));
}

TEST_F(DataNodeRegistration, CountsADestroyedSubagentAsDisconnected) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  ISNMPSubAgent* destroyed = nullptr;
  {
    FakeSubAgent brief(true);
    destroyed = &brief;
  }
  NetSNMPNode::snmpSubAgent_ = destroyed;
  node->UnregisterNode();
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kDisconnected)));
  EXPECT_FALSE(node->RegisterNode());
  NetSNMPNode::snmpSubAgent_ = &subAgent_;
}

TEST_F(DataNodeRegistration, IsMadeForASubagentInThePlaceOfADestroyedOne) {
  NetSNMPNode::snmpSubAgent_ = nullptr;
  auto* const node = BuildFanSpeed();
  alignas(FakeSubAgent) unsigned char place[sizeof(FakeSubAgent)];
  auto* subAgent = new (place) FakeSubAgent(true);
  subAgent->~FakeSubAgent();
  NetSNMPNode::snmpSubAgent_ = subAgent;
  EXPECT_FALSE(node->RegisterNode());
  subAgent = new (place) FakeSubAgent(true);
  EXPECT_TRUE(node->RegisterNode());
  node->UnregisterNode();
  subAgent->~FakeSubAgent();
}

TEST_F(DataNodeRegistration, CountsAsWithdrawnWhenTheAgentLibraryRefuses) {
  auto* const node = BuildFanSpeed();
  log_.Lines();
  // The agent library finds the registration to withdraw by this OID.
  auto* const registration = node->handlerRegistration_;
  registration->rootoid[7] += 1;
  node->UnregisterNode();
  ExpectUnregistered(*node);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kNotUnregistered)));
  registration->rootoid[7] -= 1;
  netsnmp_unregister_handler(registration);
}

TEST_F(DataNodeRegistration, IsDroppedSilentlyWhenThereIsNothingToWithdraw) {
  NetSNMPDataNode* const node = BuildFanSpeed();
  auto* const registration = node->handlerRegistration_;
  NetSNMPNodeData* const value = node->nodeData_;
  log_.Lines();
  void (*const spoilers[])(NetSNMPDataNode&) = {
      [](NetSNMPDataNode& spoilt) { spoilt.handlerRegistration_ = nullptr; },
      [](NetSNMPDataNode& spoilt) { spoilt.nodeData_ = nullptr; },
      [](NetSNMPDataNode& spoilt) { spoilt.nodeData_->tableData_ = true; }};
  for (const auto spoil : spoilers) {
    spoil(*node);
    node->UnregisterNode();
    ExpectUnregistered(*node);
    EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid), registration);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    node->nodeData_ = value;
    node->handlerRegistration_ = registration;
    node->registered_ = true;
  }
  value->tableData_ = false;
}

TEST_F(DataNodeRegistration, IsRenewedByReregisterMibs) {
  const auto* const node = BuildFanSpeed();
  log_.Lines();
  NetSNMPNode::ReregisterMibs();
  EXPECT_TRUE(node->registered_);
  EXPECT_EQ(LocalAgent::RegistrationAt(kFanSpeedOid),
            node->handlerRegistration_);
  EXPECT_THAT(log_.Lines(), ElementsAre(FanSpeedLine(kUnregistered),
                                        FanSpeedLine(kRegistered)));
}

}  // namespace
