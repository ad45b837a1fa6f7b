// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Scalars of several types: over the service's own variables, which a manager
// then reads as they are, and with values of their own.
//
//   scalar [host port]      where the master agent takes AgentX sessions
#include <NetSNMPAgentGuard.h>
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPStringNodeData.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("scalar", host, port) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

// What the service works with. Nothing here knows of SNMP.
struct Pump {
  int pressure = 40;         // in kilopascal
  unsigned int strokes = 0;  // since the start
  bool running = true;
  std::string name = "pump 1";
};

// The instance of 1.3.6.1.4.1.32473.3.1.`object`. The registry owns the node,
// and the node keeps a copy of the value that it is given.
void AddScalar(unsigned long object, const std::string& name,
               const NetSNMPNodeData& value) {
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 1, object, 0};
  new NetSNMPDataNode(oid, 11, name, value, nullptr, "");
}

void AddScalars(Pump& pump) {
  AddScalar(1, "pumpPressure",
            NetSNMPIntNodeData(&pump.pressure, eNodeAccessReadOnly));
  AddScalar(2, "pumpStrokes",
            NetSNMPCounter32NodeData(&pump.strokes, eNodeAccessReadOnly));
  AddScalar(3, "pumpRunning",
            NetSNMPBoolNodeData(&pump.running, eNodeAccessReadWrite));
  AddScalar(4, "pumpName",
            NetSNMPStringNodeData(&pump.name, eNodeAccessReadWrite));

  // "true": the value holds a copy, so this variable need not live on.
  std::string model = "P-200";
  AddScalar(5, "pumpModel",
            NetSNMPStringNodeData(&model, eNodeAccessReadOnly, true));
}

bool Initialized() {
  const NetSNMPAgentGuard guard;
  return NetSNMPNode::snmpSubAgent_ != nullptr;
}

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  Pump pump;
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  AddScalars(pump);
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705);
  service.Start();

  // The service's work: a stroke each tenth of a second, until a signal comes.
  const timespec interval = {0, 100000000};
  while (sigtimedwait(&signals, nullptr, &interval) < 0) {
    const NetSNMPAgentGuard guard;  // no manager sees it half done
    if (!pump.running) continue;
    ++pump.strokes;
    pump.pressure = 40 + static_cast<int>(pump.strokes % 5);
  }

  // Not before the subagent thread has set up the agent library.
  while (!Initialized()) std::this_thread::yield();
  service.Stop();
  NetSNMPNode::DeleteNodeMap();
}
