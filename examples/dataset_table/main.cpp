// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table whose rows are copied into the agent library, which serves them from
// then on: for a log of events, of which the service itself keeps nothing.
//
//   dataset_table [host port]      where the master agent takes AgentX sessions
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataSetTableNode.h>
#include <NetSNMPStringNodeData.h>
#include <NetSNMPUnsignedIntNodeData.h>
#include <SNMPSubAgent.h>
#include <signal.h>

#include <cstdlib>
#include <string>
#include <thread>

// eventTable: column 1 is the index, column 2 a text. No further column would
// be filled.
class EventLog {
 public:
  EventLog() {
    unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 4};
    NetSNMPUnsignedIntNodeData number(nullptr, eNodeAccessReadOnly);
    NetSNMPStringNodeData text(nullptr, eNodeAccessReadOnly);
    // Read-only: otherwise managers may create rows.
    table_ = new NetSNMPDataSetTableNode(
        oid, 9, "eventTable",
        NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadOnly, nullptr, nullptr),
        {&number, &text});
  }

  // Returns false until the node was registered for the first time: only then
  // is there a dataset.
  bool Add(std::string text) {
    const NetSNMPAgentGuard guard;
    unsigned int number = count_ + 1;
    NetSNMPUnsignedIntNodeData index(&number, eNodeAccessReadOnly);
    NetSNMPStringNodeData column(&text, eNodeAccessReadOnly);
    if (!table_->AddRow({&index, &column})) return false;
    count_ = number;
    return true;
  }

 private:
  NetSNMPDataSetTableNode* table_;  // the registry's
  unsigned int count_ = 0;
};

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port, EventLog& log)
      : SNMPSubAgent("events", host, port), log_(log) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {
    NetSNMPNode::RegisterMibs();
    log_.Add("connected");
  }

 private:
  EventLog& log_;
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

  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  EventLog log;
  Service service(argc > 2 ? argv[1] : "127.0.0.1",
                  argc > 2 ? std::atoi(argv[2]) : 705, log);
  service.Start();

  // The service's work: it has one thing to say, as soon as there is a dataset.
  const timespec interval = {0, 100000000};
  bool told = false;
  while (sigtimedwait(&signals, nullptr, &interval) < 0) {
    if (!told) told = log.Add("all is well");
  }

  // Not before the subagent thread has set up the agent library.
  while (!Initialized()) std::this_thread::yield();
  service.Stop();
  NetSNMPNode::DeleteNodeMap();
}
