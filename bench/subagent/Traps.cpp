// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPTrapNode.h"
#include "objects/objects.h"
#include "subagent/Objects.h"

namespace {

bench_values values;
int notifications = 0;
NetSNMPDataNode* scalar = nullptr;
NetSNMPTrapNode* trap = nullptr;

void SendNotifications(NetSNMPDataNode*) {
  for (int i = 0; i < notifications; ++i) trap->TriggerV2Trap(scalar);
}

}  // namespace

void BuildTraps() {
  bench_values_of(1, &values);
  unsigned long scalarOid[] = {BENCH_ROOT, BENCH_TRAPS, 1, 0};
  scalar = new NetSNMPDataNode(
      scalarOid, BENCH_ROOT_LENGTH + 3, "scalar",
      NetSNMPIntNodeData(&values.number, eNodeAccessReadOnly), nullptr, "");
  unsigned long triggerOid[] = {BENCH_ROOT, BENCH_TRAPS, 2, 0};
  new NetSNMPDataNode(triggerOid, BENCH_ROOT_LENGTH + 3, "trigger",
                      NetSNMPIntNodeData(&notifications, eNodeAccessReadWrite),
                      SendNotifications, "");
  unsigned long trapOid[] = {BENCH_ROOT, BENCH_TRAPS, 0, 1};
  trap = new NetSNMPTrapNode(trapOid, BENCH_ROOT_LENGTH + 3, "trap");
}
