// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <string>
#include <vector>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "objects/objects.h"
#include "subagent/Objects.h"

namespace {

constexpr eNodeAccessMode kMode = eNodeAccessReadOnly;

// Every value has its own copy.
void AddRow(NetSNMPTableEntryNode* entry, unsigned int k) {
  bench_values row;
  bench_values_of(k, &row);
  int number = static_cast<int>(k);
  std::string text = row.description;
  NetSNMPIntNodeData index(&number, kMode, true);
  index.isIndex_ = true;
  NetSNMPIntNodeData numberValue(&row.number, kMode, true);
  NetSNMPUnsignedIntNodeData count(&row.count, kMode, true);
  NetSNMPStringNodeData description(&text, kMode, true);
  NetSNMPCharNodeData label(row.label, kMode, true);
  NetSNMPBoolNodeData enabled(&row.enabled, kMode, true);
  NetSNMPByteNodeData address(row.address, sizeof row.address, kMode, true);
  entry->AddRow(
      {&index, &numberValue, &count, &description, &label, &enabled, &address});
}

}  // namespace

void BuildTable(unsigned int rows) {
  unsigned long tableOid[] = {BENCH_ROOT, BENCH_TABLE};
  const NetSNMPNodeData access(eNodeDataVoid, kMode, nullptr, nullptr);
  auto* const table = new NetSNMPTableNode(tableOid, BENCH_ROOT_LENGTH + 1,
                                           "table", access, nullptr, "");
  unsigned long entryOid[] = {BENCH_ROOT, BENCH_TABLE, 1};
  int number = 0;
  NetSNMPIntNodeData index(&number, kMode, true);
  auto* const entry =
      new NetSNMPTableEntryNode(entryOid, BENCH_ROOT_LENGTH + 2, "entry", "row",
                                {&index}, BENCH_LAST_COLUMN, table);
  for (unsigned int k = 1; k <= rows; ++k) AddRow(entry, k);
}
