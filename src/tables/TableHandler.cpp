// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <algorithm>
#include <memory>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPTableRow.h"
#include "adapter/ExceptionBarrier.h"
#include "nodes/Watch.h"
#include "tables/CellOwner.h"
#include "tables/RowLookup.h"
#include "tables/RowSelection.h"
#include "tables/TableIterator.h"
#include "values/BuiltInValue.h"

namespace {

using Row = RowIndex::Row;

unsigned int ColumnOf(netsnmp_request_info* request) {
  netsnmp_table_request_info* info = nullptr;
  NetSNMP::extract_snmp_table_info(&info, request);
  return info == nullptr ? 0 : info->colnum;
}

// The row that was found for a request, with its key if that is known to match
// the index values. Both are null without a row.
struct FoundRow {
  const Row* row;
  const std::string* key;
};

// The row that the iterator, or the selector in its place, has found for the
// request, while it is in the store: between the phases of a SET the
// application may replace or remove it.
FoundRow FindRow(const NetSNMPTableEntryNode& store,
                 netsnmp_request_info* request) {
  void* context = nullptr;
  NetSNMP::extract_snmp_iterator_context(&context, request);
  const auto* const row = static_cast<const Row*>(context);
  if (row == nullptr) return {};
  const RowLookup& lookup = RowLookup::Of(store);
  if (lookup.selection != nullptr) {
    const auto* const entry = lookup.selection->EntryOf(request, row);
    if (entry != nullptr) {
      return {row, lookup.index.Volatile().empty() ? &entry->first : nullptr};
    }
  }
  const bool stored =
      std::any_of(store.rows_.begin(), store.rows_.end(),
                  [&](const auto& entry) { return entry.second == row; });
  return {stored ? row : nullptr, nullptr};
}

// The name under which a request carries the watch over its row from the first
// phase of a SET to the last.
constexpr char kWatchName[] = "snmpsubagent_row_watch";

// The agent library keeps the watch with the request until it is done with
// that: with the request of a SET, until after its last phase.
void WatchRow(netsnmp_request_info* request, const Row* row) {
  auto watch = std::make_unique<Watch>(row);
  netsnmp_data_list* const entry = netsnmp_create_data_list(
      kWatchName, watch.get(),
      [](void* kept) { delete static_cast<Watch*>(kept); });
  if (entry == nullptr) return;
  watch.release();
  netsnmp_request_add_list_data(request, entry);
}

// Whether the row is still the one of the first phase of a SET, from which on
// it is watched; true for other requests. The address of a row that was
// replaced or removed since may be that of another row.
bool IsRowOfFirstPhase(const netsnmp_agent_request_info& requestInfo,
                       netsnmp_request_info* request, const Row* row) {
  const auto* const watch = static_cast<const Watch*>(
      netsnmp_request_get_list_data(request, kWatchName));
  if (watch != nullptr) return watch->IsOf(row);
  if (requestInfo.mode == MODE_SET_RESERVE1) WatchRow(request, row);
  return true;
}

// The stored cell of a column, counted from 1 along the index values and then
// the others; null if there is none.
NetSNMPNodeData* CellOf(const Row& row, unsigned int column) {
  if (column == 0) return nullptr;
  for (const bool index : {true, false}) {
    for (NetSNMPNodeData* value : row) {
      if (value == nullptr || value->isIndex_ != index) continue;
      if (--column == 0) return value;
    }
  }
  return nullptr;
}

// Serves a cell from a copy of its row, so that a SET does not change the
// stored row.
int ServeCopy(const NetSNMPTableNode& table, const Row& row,
              unsigned int column, const std::string& rowKey,
              variable_list* varbind, int mode) {
  NetSNMPTableRow workingRow(row);
  NetSNMPNodeData* const cell = workingRow.fullRow_[column - 1];
  const CellOwner owner(table, rowKey, *varbind, *cell);
  cell->ownerNode_ = owner.Get();
  return NetSNMP::handle_snmp_request(varbind, cell, mode);
}

// Whether serving the stored cell is indistinguishable from serving a copy: the
// value is only read, by code of the library, and no node has the row key's
// name, which a copy would displace.
bool MayReadStored(const NetSNMPNodeData& cell, const std::string& rowKey,
                   int mode) {
  return (mode == MODE_GET || mode == MODE_GETNEXT) && IsBuiltInValue(cell) &&
         NetSNMPNode::nodeMap_->count(rowKey) == 0;
}

// Serves one cell. Returns false, with the request untouched, if there is no
// such row or the row has no such column; else `result` is the status.
bool ServeCell(const NetSNMPTableNode& table,
               const netsnmp_agent_request_info& requestInfo,
               netsnmp_request_info* request, int& result) {
  if (table.entryNode_ == nullptr) return false;
  const auto [row, storedKey] = FindRow(*table.entryNode_, request);
  if (row == nullptr || !IsRowOfFirstPhase(requestInfo, request, row)) {
    return false;
  }
  const unsigned int column = ColumnOf(request);
  NetSNMPNodeData* const cell = CellOf(*row, column);
  if (cell == nullptr) return false;
  std::string builtKey;
  if (storedKey == nullptr) table.entryNode_->GetRowName(*row, builtKey);
  const std::string& key = storedKey == nullptr ? builtKey : *storedKey;
  const int mode = requestInfo.mode;
  // A callback for a copy may remove the row, and its key with it.
  result = MayReadStored(*cell, key, mode)
               ? NetSNMP::handle_snmp_request(request->requestvb, cell, mode)
               : ServeCopy(table, *row, column, std::string(key),
                           request->requestvb, mode);
  return true;
}

// Serves all requests that are still open from `table`, which has that name;
// returns the status of the last one that had a cell.
int ServeRequests(const NetSNMPTableNode* table, const std::string& name,
                  netsnmp_agent_request_info* requestInfo,
                  netsnmp_request_info* requests) {
  int last = SNMP_ERR_NOERROR;
  bool applicationCalled = false;
  for (auto* request = requests; request != nullptr; request = request->next) {
    if (request->processed != 0) continue;
    int result = SNMP_ERR_GENERR;
    bool found = true;
    exception_barrier::Run(
        [&] {
          // It may have deleted the table.
          if (applicationCalled) table = table_iterator::FindTable(name);
          applicationCalled = true;
          found = table != nullptr &&
                  ServeCell(*table, *requestInfo, request, result);
        },
        [&](const std::string& what) {
          table = table_iterator::FindTable(name);
          if (table != nullptr) table->NodeLogMessage(what);
        });
    if (found) {
      last = NetSNMP::set_snmp_request_error(requestInfo, request, result);
    } else {
      NetSNMP::set_snmp_request_error(requestInfo, request,
                                      SNMP_NOSUCHINSTANCE);
    }
  }
  return last;
}

}  // namespace

int var_table_handler(netsnmp_mib_handler_s* handler,
                      netsnmp_handler_registration_s* /*registration*/,
                      netsnmp_agent_request_info_s* requestInfo,
                      netsnmp_request_info_s* requests) {
  const NetSNMPAgentGuard guard;
  int status = SNMP_ERR_BADVALUE;
  bool known = false;
  exception_barrier::Run(
      [&] {
        if (NetSNMPNode::nodeMap_ == nullptr) return;
        const std::string name = handler->handler_name;
        const auto* const table = table_iterator::FindTable(name);
        known = table != nullptr;
        if (known) status = ServeRequests(table, name, requestInfo, requests);
      },
      [](const std::string&) {});
  return known ? status
               : NetSNMP::set_snmp_request_error(requestInfo, requests, status);
}
