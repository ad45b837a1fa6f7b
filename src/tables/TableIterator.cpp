// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/TableIterator.h"

#include <iterator>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPTableRow.h"
#include "adapter/ExceptionBarrier.h"
#include "nodes/NodeLookup.h"
#include "tables/RowLookup.h"
#include "tables/RowSelection.h"
#include "values/BuiltInValue.h"

namespace {

using Row = RowIndex::Row;

netsnmp_table_registration_info* NewTableInfo(
    const NetSNMPTableEntryNode& store) {
  auto* const info = SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  if (info == nullptr) return nullptr;
  for (const NetSNMPNodeData* index : store.indexTemplate_) {
    NetSNMP::add_index_snmp_table(
        info, index == nullptr ? 0 : index->NodeIndexASNDataType());
  }
  info->min_column = static_cast<unsigned int>(store.indexTemplate_.size()) + 1;
  info->max_column = store.columnCount_;
  return info;
}

// The table that the hooks walk; null when it is gone.
const NetSNMPTableNode* TableOf(const netsnmp_iterator_info* info) {
  const auto* const name = static_cast<const std::string*>(info->myvoid);
  return name == nullptr ? nullptr : table_iterator::FindTable(*name);
}

// Moves the cursor of a walk over all rows.
Row* MoveCursor(NetSNMPTableEntryNode& store, RowIndex::Rows::iterator place) {
  store.rowCursor_ = place;
  return place == store.rows_.end() ? nullptr : place->second;
}

// The selection that the iterator is to see instead of all rows; null for all.
RowSelection* SelectionOf(const NetSNMPTableEntryNode& store) {
  RowSelection* const selection = RowLookup::Of(store).selection;
  return selection == nullptr || selection->WalksAll() ? nullptr : selection;
}

Row* FirstRow(NetSNMPTableEntryNode& store) {
  RowSelection* const selection = SelectionOf(store);
  if (selection != nullptr) return selection->First();
  return MoveCursor(store, store.rows_.begin());
}

Row* NextRow(NetSNMPTableEntryNode& store) {
  RowSelection* const selection = SelectionOf(store);
  if (selection != nullptr) return selection->Next();
  const auto cursor = store.rowCursor_;
  const bool atEnd = cursor == store.rows_.end();
  return MoveCursor(store, atEnd ? cursor : std::next(cursor));
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
// varbinds to be written anew, if an index value is of an application-defined
// class.
bool WriteStoredIndexes(const Row& row, variable_list* varbind) {
  for (NetSNMPNodeData* value : row) {
    if (varbind == nullptr) break;
    if (value == nullptr || !value->isIndex_) continue;
    if (!IsBuiltInValue(*value)) return false;
    WriteIndex(varbind, value);
    varbind = varbind->next_variable;
  }
  return true;
}

// Returns `row` as the data context with its indexes in `indexData`; null
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

// Runs a hook's body; if an application-defined override throws, the walk ends
// there.
template <typename Body>
variable_list* RunHook(const netsnmp_iterator_info* info, const Body& body) {
  const NetSNMPAgentGuard guard;
  variable_list* result = nullptr;
  exception_barrier::Run([&] { result = body(); },
                         [&](const std::string& what) {
                           const auto* const table = TableOf(info);
                           if (table != nullptr) table->NodeLogMessage(what);
                         });
  return result;
}

}  // namespace

netsnmp_iterator_info_s* table_iterator::NewInfo(
    const NetSNMPTableEntryNode& store, std::string* tableName) {
  if (store.indexTemplate_.empty()) return nullptr;
  netsnmp_table_registration_info* const tableInfo = NewTableInfo(store);
  if (tableInfo == nullptr) return nullptr;
  auto* const info = SNMP_MALLOC_TYPEDEF(netsnmp_iterator_info);
  if (info == nullptr) {
    NetSNMP::free_table_registration_info(tableInfo);
    return nullptr;
  }
  info->get_first_data_point = table_get_first_data_point;
  info->get_next_data_point = table_get_next_data_point;
  info->table_reginfo = tableInfo;
  info->myvoid = tableName;
  return info;
}

NetSNMPTableNode* table_iterator::FindTable(const std::string& name) {
  return node_lookup::Cast<NetSNMPTableNode>((*NetSNMPNode::nodeMap_)[name]);
}

variable_list* table_get_first_data_point(void** loopContext,
                                          void** dataContext,
                                          variable_list* indexData,
                                          netsnmp_iterator_info_s* info) {
  return RunHook(info, [&]() -> variable_list* {
    if (NetSNMPNode::nodeMap_ == nullptr) return nullptr;
    const auto* const table = TableOf(info);
    if (table == nullptr || table->entryNode_ == nullptr) return nullptr;
    Row* const row = FirstRow(*table->entryNode_);
    if (row != nullptr) *loopContext = table->entryNode_;
    return HandOut(row, dataContext, indexData);
  });
}

variable_list* table_get_next_data_point(void** loopContext, void** dataContext,
                                         variable_list* indexData,
                                         netsnmp_iterator_info_s* info) {
  return RunHook(info, [&]() -> variable_list* {
    if (*loopContext == nullptr) return nullptr;
    auto& store = *static_cast<NetSNMPTableEntryNode*>(*loopContext);
    return HandOut(NextRow(store), dataContext, indexData);
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
