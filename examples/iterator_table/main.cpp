// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table of the service's own rows: they come and go, their cells are bound to
// variables of the service, and a manager writes some of them.
//
//   iterator_table [host port]      where the master agent takes AgentX
//   sessions
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPTableEntryNode.h>
#include <NetSNMPTableNode.h>
#include <NetSNMPUnsignedIntNodeData.h>

#include <map>
#include <string>

#include "../common/ExampleService.h"

struct Port {
  unsigned int frames = 0;
  bool enabled = true;
};

// An index value has a copy, so that its row is found fast.
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

  // The cells are bound to the members of `port`, which must outlive the row.
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

int main(int argc, char* argv[]) {
  std::map<unsigned int, Port> ports;  // its elements stay where they are
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  PortTable table;
  for (const unsigned int number : {1, 2, 10}) table.Add(number, ports[number]);

  // The service's work: frames arrive at enabled ports, and once a manager
  // disables port 2, its row is removed.
  ExampleService service("ports", argc, argv);
  service.Run([&] {
    for (auto& port : ports) {
      if (port.second.enabled) ++port.second.frames;
    }
    if (!ports[2].enabled) table.Remove(2);
  });
}
