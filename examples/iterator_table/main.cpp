// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table of the service's own rows: they come and go, their cells show
// variables of the service, and a manager writes some of them.
//
//   iterator_table [host port]      where the master agent takes AgentX
//   sessions
#include <NetSNMPAgentGuard.h>
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPTableEntryNode.h>
#include <NetSNMPTableNode.h>
#include <NetSNMPUnsignedIntNodeData.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <map>
#include <string>
#include <thread>

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("ports", host, port) {}
  void ApplicationOperation() override {}
  // Not ReregisterMibs(), after which managers see no iterator table.
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

struct Port {
  unsigned int frames = 0;
  bool enabled = true;
};

// An index is held by the value itself: rows are found by it.
NetSNMPUnsignedIntNodeData Index(unsigned int number) {
  NetSNMPUnsignedIntNodeData index(&number, eNodeAccessReadOnly, true);
  index.isIndex_ = true;
  return index;
}

// portTable: column 1 is the index, portFrames 2 and portEnabled 3.
class PortTable {
 public:
  PortTable() {
    unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 3, 1};
    auto* const table = new NetSNMPTableNode(
        oid, 9, "portTable",
        NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
        nullptr, "");
    auto index = Index(0);
    rows_ = new NetSNMPTableEntryNode(oid, 10, "portEntry", "port", {&index}, 3,
                                      table);
  }

  // The cells work on the members of `port`, which must outlive the row.
  void Add(unsigned int number, Port& port) {
    auto index = Index(number);
    NetSNMPCounter32NodeData frames(&port.frames, eNodeAccessReadOnly);
    NetSNMPBoolNodeData enabled(&port.enabled, eNodeAccessReadWrite);
    rows_->AddRow({&index, &frames, &enabled});
  }

  void Remove(unsigned int number) {
    rows_->RemoveRow("port." + std::to_string(number));
  }

 private:
  NetSNMPTableEntryNode* rows_;  // the registry's
};

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

  std::map<unsigned int, Port> ports;  // its elements stay where they are
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  PortTable table;
  for (const unsigned int number : {1, 2, 10}) table.Add(number, ports[number]);
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705);
  service.Start();

  // The service's work: frames arrive where a manager lets them, and once
  // somebody disables port 2, it is pulled out.
  const timespec interval = {0, 100000000};
  while (sigtimedwait(&signals, nullptr, &interval) < 0) {
    const NetSNMPAgentGuard guard;
    for (auto& port : ports) {
      if (port.second.enabled) ++port.second.frames;
    }
    if (!ports[2].enabled) table.Remove(2);
  }

  // Not before the subagent thread has set up the agent library.
  while (!Initialized()) std::this_thread::yield();
  service.Stop();
  NetSNMPNode::DeleteNodeMap();
}
