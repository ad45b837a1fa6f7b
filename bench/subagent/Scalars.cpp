// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <string>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "objects/objects.h"
#include "subagent/Objects.h"

namespace {

// Nodes are registered in the order of their names, so names sort like numbers.
std::string NameOf(unsigned int k) {
  const std::string digits = std::to_string(k);
  return "scalar" + std::string(6 - digits.size(), '0') + digits;
}

void BuildNode(unsigned int k, const NetSNMPNodeData& value) {
  unsigned long oid[] = {BENCH_ROOT, BENCH_SCALARS, k, 0};
  new NetSNMPDataNode(oid, BENCH_ROOT_LENGTH + 3, NameOf(k), value, nullptr,
                      "");
}

// A scalar bound to the application's variables; a string is a copy.
void BuildScalar(unsigned int k, bench_values* variables) {
  constexpr eNodeAccessMode kMode = eNodeAccessReadWrite;
  switch (bench_type_of_scalar(k)) {
    case BENCH_NUMBER:
      return BuildNode(k, NetSNMPIntNodeData(&variables->number, kMode));
    case BENCH_COUNT:
      return BuildNode(k, NetSNMPUnsignedIntNodeData(&variables->count, kMode));
    case BENCH_DESCRIPTION: {
      std::string text = variables->description;
      return BuildNode(k, NetSNMPStringNodeData(&text, kMode, true));
    }
    case BENCH_LABEL:
      return BuildNode(k, NetSNMPCharNodeData(variables->label, kMode));
    case BENCH_ENABLED:
      return BuildNode(k, NetSNMPBoolNodeData(&variables->enabled, kMode));
    default:
      return BuildNode(
          k, NetSNMPByteNodeData(variables->address, sizeof variables->address,
                                 kMode));
  }
}

}  // namespace

void BuildScalars(unsigned int count) {
  auto* const variables = new bench_values[count];
  for (unsigned int k = 1; k <= count; ++k) {
    bench_values_of(k, &variables[k - 1]);
    BuildScalar(k, &variables[k - 1]);
  }
}
