// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Scalars of several types, some bound to variables of the service, one with a
// copy.
//
//   scalar [host port]      where the master agent takes AgentX sessions
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPStringNodeData.h>

#include <string>

#include "../common/ExampleService.h"

// The variables of the service, which know nothing of SNMP.
struct Pump {
  int pressure = 40;         // in kilopascal
  unsigned int strokes = 0;  // since the start
  bool running = true;
  std::string name = "pump 1";
};

// Builds the instance of 1.3.6.1.4.1.32473.3.1.`object`. The registry owns the
// node, and the node keeps a clone of `value`.
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

  // "true": the value has a copy, so this variable may go.
  std::string model = "P-200";
  AddScalar(5, "pumpModel",
            NetSNMPStringNodeData(&model, eNodeAccessReadOnly, true));
}

int main(int argc, char* argv[]) {
  Pump pump;
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  AddScalars(pump);

  ExampleService service("scalar", argc, argv);
  service.Run([&] {
    if (!pump.running) return;
    ++pump.strokes;
    pump.pressure = 40 + static_cast<int>(pump.strokes % 5);
  });
}
