// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service on a device with its own platform library: the nodes write to the
// device's log, and the device's task manager runs the subagent.
//
//   platform [host port]      where the master agent takes AgentX sessions
#include <IRunnable.h>
#include <LogXMessage.h>
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <string>
#include <thread>

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("platform", host, port) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

bool Initialized() {
  const NetSNMPAgentGuard guard;
  return NetSNMPNode::snmpSubAgent_ != nullptr;
}

// The device's task manager, which uses only this interface.
void RunUntilSignal(vela::IRunnable& task, const sigset_t& signals) {
  task.Start();
  int signal = 0;
  sigwait(&signals, &signal);

  // Stop() must not come before the subagent thread has set up the agent
  // library.
  while (!Initialized()) std::this_thread::yield();
  task.Stop();
}

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  int temperature = 21;
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  NetSNMPNode::NodeMsgLogger_ = LogXMessage;
  NetSNMPNode::NodeMsgLogType_ = 6;
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 6, 1, 0};
  new NetSNMPDataNode(oid, 11, "temperature",
                      NetSNMPIntNodeData(&temperature, eNodeAccessReadWrite),
                      nullptr, "");
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705);
  RunUntilSignal(service, signals);
  NetSNMPNode::DeleteNodeMap();
}
