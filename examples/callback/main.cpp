// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A callback that learns of a manager's SET, brings the value back into range
// and leaves the slow part to the service's own thread.
//
//   callback [host port]      where the master agent takes AgentX sessions
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("callback", host, port) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

// The valve's opening in percent. Managers write `wanted`, the service's own
// thread drives the valve there, which takes its time.
struct Valve {
  int wanted = 0;
  int is = 0;
};

// Runs on the subagent thread while the request is served: quick, and without
// deleting or registering nodes. The value is stored already and there is no
// way to refuse it any more, but what is stored can be mended.
void OnWantedSet(NetSNMPDataNode* node) {
  int& wanted = *static_cast<int*>(node->nodeData_->NodeDataValue());
  if (wanted < 0) wanted = 0;
  if (wanted > 100) wanted = 100;
  std::cout << node->NodeName() << " is " << wanted << std::endl;
}

void AddScalars(Valve& valve) {
  unsigned long wanted[] = {1, 3, 6, 1, 4, 1, 32473, 3, 2, 1, 0};
  new NetSNMPDataNode(wanted, 11, "valveWanted",
                      NetSNMPIntNodeData(&valve.wanted, eNodeAccessReadWrite),
                      OnWantedSet, "");
  unsigned long is[] = {1, 3, 6, 1, 4, 1, 32473, 3, 2, 2, 0};
  new NetSNMPDataNode(is, 11, "valveIs",
                      NetSNMPIntNodeData(&valve.is, eNodeAccessReadOnly),
                      nullptr, "");
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

  Valve valve;
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  AddScalars(valve);
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705);
  service.Start();

  // The service's work: one percent each hundredth of a second.
  const timespec interval = {0, 10000000};
  while (sigtimedwait(&signals, nullptr, &interval) < 0) {
    const NetSNMPAgentGuard guard;
    if (valve.is < valve.wanted) ++valve.is;
    if (valve.is > valve.wanted) --valve.is;
  }

  // Not before the subagent thread has set up the agent library.
  while (!Initialized()) std::this_thread::yield();
  service.Stop();
  NetSNMPNode::DeleteNodeMap();
}
