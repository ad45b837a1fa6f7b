// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A thermal controller that a manager reads and sets over SNMP.
//
//   thermal [host [port]]
//
// names the master agent: an snmpd with "master agentx" and, for example,
// "agentXSocket tcp:127.0.0.1:1705" in its configuration. Then
//
//   snmpget -v2c -c public -M examples/mibs -m THERMAL-EXAMPLE-MIB
//     127.0.0.1 thermalTargetTemperature.0
//
// answers
//
//   THERMAL-EXAMPLE-MIB::thermalTargetTemperature.0 = INTEGER: 400 0.1 degrees
//   Celsius
//
// scripts/demo runs both, with all that they need.
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <thread>

#include "Alarms.h"
#include "EventLog.h"
#include "FanTable.h"
#include "LogXMessage.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "SNMPSubAgent.h"
#include "ThermalController.h"
#include "ThermalObjects.h"

namespace {

constexpr unsigned int kNodeLogLevel = 6;

class ThermalSubAgent : public SNMPSubAgent {
 public:
  ThermalSubAgent(const std::string& host, int port, EventLog& eventLog)
      : SNMPSubAgent("thermal", host, port), eventLog_(eventLog) {}

  void ApplicationOperation() override {}

  // The session has come up, for the first time or again. After
  // ReregisterMibs() managers would see no fan table.
  void OnSubAgentConnected() override {
    NetSNMPNode::RegisterMibs();
    eventLog_.Add("connected to the master agent");
  }

 private:
  EventLog& eventLog_;
};

// Stop() must not come before the subagent thread has set up the agent library
// and then snmpSubAgent_.
void WaitUntilInitialized() {
  for (bool initialized = false; !initialized; std::this_thread::yield()) {
    const NetSNMPAgentGuard guard;
    initialized = NetSNMPNode::snmpSubAgent_ != nullptr;
  }
}

// Waits for `seconds` or one of `signals`; returns whether a signal arrived.
bool WaitForSignal(const sigset_t& signals, unsigned int seconds) {
  const timespec time = {static_cast<time_t>(seconds), 0};
  return sigtimedwait(&signals, nullptr, &time) > 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string host = argc > 1 ? argv[1] : "127.0.0.1";
  const int port = argc > 2 ? std::atoi(argv[2]) : 705;

  // Before the subagent thread starts: it inherits the mask, and only this
  // thread waits for the signals.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  // 1. The registry of nodes, and their log.
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  NetSNMPNode::NodeMsgLogger_ = LogXMessage;
  NetSNMPNode::NodeMsgLogType_ = kNodeLogLevel;

  // 2. The device, its objects, and the subagent.
  ThermalController controller;
  BuildThermalObjects(controller);
  FanTable fanTable(controller.fans);
  EventLog eventLog;
  Alarms alarms(controller, eventLog);
  ThermalSubAgent subAgent(host, port, eventLog);

  // 3. From here on the subagent thread serves managers.
  subAgent.Start();
  WaitUntilInitialized();

  // 4. The device's own work. While the guard exists, no manager sees what is
  // half changed.
  for (unsigned int seconds = 1; !WaitForSignal(signals, seconds);) {
    const NetSNMPAgentGuard guard;
    controller.Run(seconds);
    fanTable.TellNewLabels();
    alarms.Check();
    seconds = SampleInterval();
  }

  // 5. The end, in this order: the nodes are withdrawn while the subagent still
  // exists.
  subAgent.Stop();
  NetSNMPNode::DeleteNodeMap();
  return 0;
}
