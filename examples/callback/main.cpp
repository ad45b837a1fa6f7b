// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A callback that gets the value of a manager's SET, brings it back into range
// and leaves the slow part to the service's own thread.
//
//   callback [host port]      where the master agent takes AgentX sessions
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>

#include <algorithm>
#include <iostream>
#include <string>

#include "../common/ExampleService.h"

// The valve's opening in percent. Managers write `wanted`, the service's own
// thread drives the valve there, which takes its time.
struct Valve {
  int wanted = 0;
  int is = 0;
};

// Runs on the subagent thread while the request is served, so it must be quick.
// The value is stored already and cannot be refused, but it can be corrected.
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

int main(int argc, char* argv[]) {
  Valve valve;
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  AddScalars(valve);

  // The service's work: to drive the valve to where it is wanted, ten percent
  // at a time.
  ExampleService service("callback", argc, argv);
  service.Run([&] {
    valve.is += std::max(-10, std::min(10, valve.wanted - valve.is));
  });
}
