// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SNMPSubAgent.h"

#include <gmock/gmock.h>

#include <thread>
#include <type_traits>

#include "CallJournal.h"
#include "LoggedLines.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetworkInterfaces.h"
#include "support/AgentLibrarySettings.h"
#include "support/Layout.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"
#include "support/VirtualSlot.h"
#include "testkit/LoopbackPort.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// An application's subagent that does nothing of its own.
class PlainSubAgent : public SNMPSubAgent {
 public:
  using SNMPSubAgent::SNMPSubAgent;
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {}
};

void ExpectJustConstructed(const SNMPSubAgent& subAgent) {
  EXPECT_FALSE(subAgent.connected_);
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_EQ(subAgent.thread_, nullptr);
  EXPECT_FALSE(subAgent.IsRunning());
  EXPECT_THAT(subAgent.callbacks_, IsEmpty());
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, nullptr);
  EXPECT_THAT(CallJournal::Get().Calls(), IsEmpty());
}

TEST(ASubAgent, HasItsMasterAgentOnThisDeviceByDefault) {
  const PlainSubAgent subAgent("fancontrol");
  EXPECT_EQ(subAgent.agentName_, "fancontrol");
  EXPECT_EQ(subAgent.masterAddress_, NetworkInterfaces::loopbackIPv4());
  EXPECT_EQ(subAgent.masterPort_, 705);
  ExpectJustConstructed(subAgent);
}

TEST(ASubAgent, HasItsMasterAgentWhereItIsTold) {
  const PlainSubAgent subAgent("fancontrol", "10.0.0.5", 1705);
  EXPECT_EQ(subAgent.agentName_, "fancontrol");
  EXPECT_EQ(subAgent.masterAddress_, "10.0.0.5");
  EXPECT_EQ(subAgent.masterPort_, 1705);
  ExpectJustConstructed(subAgent);
}

TEST(ASubAgent, HasItsBasesAndFieldsInTheirFixedOrder) {
  const PlainSubAgent plain("fancontrol");
  const SNMPSubAgent& subAgent = plain;
  EXPECT_TRUE(LieInOrder(
      {static_cast<const ISNMPSubAgent*>(&subAgent),
       static_cast<const vela::IRunnable*>(&subAgent), &subAgent.masterAddress_,
       &subAgent.masterPort_, &subAgent.agentName_, &subAgent.connected_,
       &subAgent.thread_, &subAgent.mutex_, &subAgent.callbacks_}));
  EXPECT_EQ(
      static_cast<const void*>(static_cast<const ISNMPSubAgent*>(&subAgent)),
      &subAgent);
  EXPECT_TRUE((std::is_same<decltype(subAgent.connected_), bool>::value));
}

TEST(ASubAgent, HasItsVirtualOperationsInTheirFixedSlots) {
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::Connected), 0);
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::ApplicationOperation), 1);
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::OnSubAgentConnected), 2);
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::RegisterSubAgentCallback), 3);
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::UnregisterSubAgentCallback), 4);
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgent::NotifySubAgentCallbacks), 5);
  // Slots 6 and 7 are the destructor's.
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::Start), 8);
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::Stop), 9);
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::IsRunning), 10);
  EXPECT_EQ(VirtualSlot(&vela::IRunnable::Start), 0);
  EXPECT_EQ(VirtualSlot(&vela::IRunnable::Stop), 1);
  EXPECT_EQ(VirtualSlot(&vela::IRunnable::IsRunning), 2);
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::initialize), -1);
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::process), -1);
  EXPECT_EQ(VirtualSlot(&SNMPSubAgent::threadProc), -1);
}

TEST(ASubAgent, IsTheFirstOfItsClassesWithAVirtualDestructor) {
  EXPECT_FALSE(std::has_virtual_destructor<ISNMPSubAgent>::value);
  EXPECT_FALSE(std::has_virtual_destructor<vela::IRunnable>::value);
  EXPECT_TRUE(std::has_virtual_destructor<SNMPSubAgent>::value);
  EXPECT_TRUE(std::is_abstract<SNMPSubAgent>::value);
  EXPECT_FALSE(std::is_copy_constructible<PlainSubAgent>::value);
}

std::string AgentXSocket() {
  const char* const text = netsnmp_ds_get_string(NETSNMP_DS_APPLICATION_ID,
                                                 NETSNMP_DS_AGENT_X_SOCKET);
  return text == nullptr ? "" : text;
}

struct Master {
  std::string address;
  std::string host;
};

// For the names of the tests.
std::ostream& operator<<(std::ostream& stream, const Master& master) {
  return stream << master.address;
}

class ASubAgentsSocket : public testing::TestWithParam<Master> {};

// The agent library is set up once per process, so each is a test of its own.
TEST_P(ASubAgentsSocket, IsNamedAfterItsMasterAgent) {
  const support::AgentLibrarySettings settings("fancontrol", "");
  const testkit::LoopbackPort absent;
  PlainSubAgent subAgent("fancontrol", GetParam().address, absent.Number());
  subAgent.initialize();
  EXPECT_EQ(AgentXSocket(),
            "tcp:" + GetParam().host + ":" + std::to_string(absent.Number()));
}

// 0.0.0.0 is this machine, too, but no loopback address.
INSTANTIATE_TEST_SUITE_P(Masters, ASubAgentsSocket,
                         testing::Values(Master{"127.0.0.1", "localhost"},
                                         Master{"127.1.2.3", "localhost"},
                                         Master{"localhost", "localhost"},
                                         Master{"0.0.0.0", "0.0.0.0"}));

TEST(ADefaultSubAgentsSocket, IsThatOfPort705OfThisDevice) {
  const support::AgentLibrarySettings settings("fancontrol", "");
  PlainSubAgent subAgent("fancontrol");
  subAgent.initialize();
  EXPECT_EQ(AgentXSocket(), "tcp:localhost:705");
}

TEST(ASubAgentsSetUp, HasAllThatASessionNeedsBeforeItCanComeUp) {
  LonelySubAgent subAgent;
  bool asked = false;
  CallJournal::Get().SetHook([&](const std::string& call) {
    if (call != "init_agent") return;
    asked = true;
    EXPECT_EQ(netsnmp_ds_get_boolean(NETSNMP_DS_APPLICATION_ID,
                                     NETSNMP_DS_AGENT_ROLE),
              1);
    EXPECT_NE(AgentXSocket(), "");
    EXPECT_EQ(NetSNMPNode::snmpSubAgent_, nullptr);
    std::thread([&] {
      const boost::unique_lock<boost::mutex> lock(subAgent.mutex_,
                                                  boost::try_to_lock);
      EXPECT_FALSE(lock.owns_lock());
    }).join();
  });
  subAgent.initialize();
  CallJournal::Get().SetHook({});
  EXPECT_TRUE(asked);
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, &subAgent);
  EXPECT_THAT(CallJournal::Get().Calls(),
              ElementsAre("init_agent", "init_snmp"));
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

void RaiseSessionEvent(int event) {
  const NetSNMPAgentGuard guard;
  snmp_call_callbacks(SNMP_CALLBACK_APPLICATION, event, nullptr);
}

TEST(ASubAgentsSetUp, AsksTheAgentLibraryForSessionEvents) {
  LonelySubAgent subAgent;
  subAgent.initialize();
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_START);
  EXPECT_TRUE(subAgent.Connected());
  EXPECT_EQ(subAgent.Connections(), 1);
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_STOP);
  EXPECT_FALSE(subAgent.Connected());
}

// Makes a session come up while init_snmp() reads the configuration.
int BeginSession(int, int, void*, void* subAgent) {
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, subAgent);
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_START);
  return 0;
}

TEST(ASubAgentsSetUp, HearsOfASessionThatComesUpMeanwhile) {
  LonelySubAgent subAgent;
  ISNMPSubAgent* const expected = &subAgent;
  snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_POST_READ_CONFIG,
                         BeginSession, expected);
  subAgent.initialize();
  EXPECT_TRUE(subAgent.Connected());
  EXPECT_EQ(subAgent.Connections(), 1);
}

TEST(ASubAgentsSetUp, IsMadeOncePerProcess) {
  LonelySubAgent first;
  first.initialize();
  const std::string socket = AgentXSocket();
  first.initialize();
  LonelySubAgent second;
  ASSERT_TRUE(second.StartAndLoop());
  EXPECT_EQ(CallJournal::Get().Count("init_agent"), 1);
  EXPECT_EQ(CallJournal::Get().Count("init_snmp"), 1);
  EXPECT_EQ(AgentXSocket(), socket);
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, &first);
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_START);
  EXPECT_EQ(first.Connections(), 1);
  EXPECT_EQ(second.Connections(), 0);
  EXPECT_FALSE(second.Connected());
}

TEST(ADestroyedSubAgent, IsNoLongerToldOfEventsNorAskedByNodes) {
  const ScopedRegistry registry;
  NodeLog log;
  int speed = 7;
  Oid oid = TestOid({1, 0});
  const void* address = nullptr;
  {
    LonelySubAgent subAgent;
    address = &subAgent;
    subAgent.initialize();
    RaiseSessionEvent(SNMPD_CALLBACK_INDEX_START);
    new NetSNMPDataNode(oid.data(), Length(oid), "fanSpeed",
                        NetSNMPIntNodeData(&speed, eNodeAccessReadOnly),
                        nullptr, "");
  }
  EXPECT_EQ(NetSNMPNode::snmpSubAgent_, address);
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_STOP);
  RaiseSessionEvent(SNMPD_CALLBACK_INDEX_START);
  log.Lines();
  NetSNMPNode::DeleteNodes();
  EXPECT_THAT(log.Lines(),
              ElementsAre("SNMP: Node = fanSpeed; Net-SNMP data node "
                          "unregistration could not complete- disconnected "
                          "subagent."));
}

}  // namespace
