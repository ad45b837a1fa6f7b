// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table whose rows are copied into the agent library, which serves them from
// then on: a log of events that the service itself does not store.
//
//   dataset_table [host port]      where the master agent takes AgentX sessions
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataSetTableNode.h>
#include <NetSNMPStringNodeData.h>
#include <NetSNMPUnsignedIntNodeData.h>

#include <string>

#include "../common/ExampleService.h"

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

  // Returns false before the node's first registration, which creates the
  // dataset.
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

class Service : public ExampleService {
 public:
  Service(int argc, char* argv[], EventLog& log)
      : ExampleService("events", argc, argv), log_(log) {}
  void OnSubAgentConnected() override {
    NetSNMPNode::RegisterMibs();
    log_.Add("connected");
  }

 private:
  EventLog& log_;
};

int main(int argc, char* argv[]) {
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  EventLog log;

  // The service logs one event, as soon as there is a dataset.
  bool told = false;
  Service service(argc, argv, log);
  service.Run([&] {
    if (!told) told = log.Add("all is well");
  });
}
