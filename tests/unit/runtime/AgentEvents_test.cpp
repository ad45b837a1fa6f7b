// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/AgentEvents.h"

#include <gmock/gmock.h>

#include "ISNMPSubAgentCallback.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "support/NodeLog.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StateReceiver : public ISNMPSubAgentCallback {
 public:
  void SubAgentStateChanged(int state) override { states_.push_back(state); }
  const std::vector<int>& States() const { return states_; }

 private:
  std::vector<int> states_;
};

void RaiseSessionStart(netsnmp_session* session = nullptr) {
  snmp_call_callbacks(SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_START,
                      session);
}

// Net-SNMP 5.10 raises an event of this number for each session that it frees.
TEST(ASessionStart, OfASessionThatIsNotOpenIsNone) {
  StateReceiver receiver;
  LonelySubAgent subAgent;
  subAgent.RegisterSubAgentCallback("receiver", &receiver);
  subAgent.initialize();
  netsnmp_session freed{};
  RaiseSessionStart(&freed);
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_THAT(receiver.States(), IsEmpty());

  RaiseSessionStart();
  RaiseSessionStart(&freed);
  EXPECT_TRUE(subAgent.Connected());
  EXPECT_THAT(receiver.States(), ElementsAre(1));
}

// A way to shut the agent library down.
struct Shutdown {
  std::string name;
  void (*act)(const std::string& application);
};

// For the names of the tests.
std::ostream& operator<<(std::ostream& stream, const Shutdown& shutdown) {
  return stream << shutdown.name;
}

class AShutdown : public testing::TestWithParam<Shutdown> {};

TEST_P(AShutdown, DetachesTheSubagentAndItsNodesFromTheAgentLibrary) {
  const ScopedRegistry registry;
  NodeLog log;
  StateReceiver receiver;
  Oid oid = TestOid({1, 0});
  int speed = 7;
  LonelySubAgent subAgent;
  subAgent.RegisterSubAgentCallback("receiver", &receiver);
  subAgent.initialize();
  RaiseSessionStart();
  new NetSNMPDataNode(oid.data(), Length(oid), "fanSpeed",
                      NetSNMPIntNodeData(&speed, eNodeAccessReadOnly), nullptr,
                      "");
  log.Lines();

  GetParam().act(subAgent.agentName_);
  EXPECT_FALSE(subAgent.Connected());
  RaiseSessionStart();
  EXPECT_FALSE(subAgent.Connected());
  EXPECT_THAT(receiver.States(), ElementsAre(1));
  NetSNMPNode::DeleteNodes();
  EXPECT_THAT(log.Lines(),
              ElementsAre("SNMP: Node = fanSpeed; Net-SNMP data node "
                          "unregistration could not complete- disconnected "
                          "subagent."));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, AShutdown,
    testing::Values(
        Shutdown{"shutdown_snmp",
                 [](const std::string& application) {
                   NetSNMP::shutdown_snmp(application);
                 }},
        Shutdown{"shutdown_snmp_agent",
                 [](const std::string&) { NetSNMP::shutdown_snmp_agent(); }},
        Shutdown{"snmp_shutdown", [](const std::string& application) {
                   snmp_shutdown(application.c_str());
                 }}));

}  // namespace
