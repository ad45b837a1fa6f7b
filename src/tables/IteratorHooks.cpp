// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPTableRow.h"
#include "adapter/Containment.h"
#include "tables/TableLookup.h"
#include "values/LibraryValue.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

// The table that the hooks walk; null when it is gone.
const NetSNMPTableNode* TableOf(const netsnmp_iterator_info* info) {
  const auto* const name = static_cast<const std::string*>(info->myvoid);
  return name == nullptr ? nullptr : FindTable(*name);
}

// The agent library reads an index's number through the varbind's value, which
// is null after a value without storage.
void WriteIndex(variable_list* varbind, NetSNMPNodeData* value) {
  static const int kNone = 0;
  NetSNMP::set_snmp_var_value(varbind, value);
  if (varbind->val.string == nullptr) {
    snmp_set_var_value(varbind, &kNone, sizeof(kNone));
  }
}

// Writes the index values straight from the stored row. Returns false, with
// varbinds to be written anew, if one is of a class of the application's.
bool WriteStoredIndexes(const Row& row, variable_list* varbind) {
  for (NetSNMPNodeData* value : row) {
    if (varbind == nullptr) break;
    if (value == nullptr || !value->isIndex_) continue;
    if (!IsLibraryValue(*value)) return false;
    WriteIndex(varbind, value);
    varbind = varbind->next_variable;
  }
  return true;
}

// Hands `row` out as the data context with its indexes in `indexData`; null
// without a row.
variable_list* HandOut(Row* row, void** dataContext, variable_list* indexData) {
  if (row == nullptr) return nullptr;
  *dataContext = row;
  if (!WriteStoredIndexes(*row, indexData)) {
    NetSNMPTableRow workingRow(*row);
    set_data_point_indices(workingRow, indexData);
  }
  return indexData;
}

// Runs a hook's body; when an override of the application's throws, the walk
// ends there.
template <typename Body>
variable_list* RunHook(const netsnmp_iterator_info* info, const Body& body) {
  const NetSNMPAgentGuard guard;
  variable_list* result = nullptr;
  containment::Contain([&] { result = body(); },
                       [&](const std::string& what) {
                         const auto* const table = TableOf(info);
                         if (table != nullptr) table->NodeLogMessage(what);
                       });
  return result;
}

}  // namespace

variable_list* table_get_first_data_point(void** loopContext,
                                          void** dataContext,
                                          variable_list* indexData,
                                          netsnmp_iterator_info_s* info) {
  return RunHook(info, [&]() -> variable_list* {
    if (NetSNMPNode::nodeMap_ == nullptr) return nullptr;
    const auto* const table = TableOf(info);
    if (table == nullptr || table->entryNode_ == nullptr) return nullptr;
    NetSNMPTableEntryNode* const entry = table->entryNode_;
    Row* const row = entry->FirstCandidate();
    if (row != nullptr) *loopContext = entry;
    return HandOut(row, dataContext, indexData);
  });
}

variable_list* table_get_next_data_point(void** loopContext, void** dataContext,
                                         variable_list* indexData,
                                         netsnmp_iterator_info_s* info) {
  return RunHook(info, [&]() -> variable_list* {
    if (*loopContext == nullptr) return nullptr;
    auto* const entry = static_cast<NetSNMPTableEntryNode*>(*loopContext);
    return HandOut(entry->NextCandidate(), dataContext, indexData);
  });
}

void set_data_point_indices(NetSNMPTableRow& row, variable_list* indexData) {
  NetSNMPNodeData* value = row.GetFirstIndex();
  while (value != nullptr && indexData != nullptr) {
    WriteIndex(indexData, value);
    value = row.GetNextIndex();
    indexData = indexData->next_variable;
  }
}
