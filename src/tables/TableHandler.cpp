// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPTableRow.h"
#include "adapter/Containment.h"
#include "nodes/Watch.h"
#include "tables/ServedRow.h"
#include "tables/TableLookup.h"
#include "values/LibraryValue.h"

namespace {

using Registry = std::map<std::string, NetSNMPNode*>;

// Takes `node` out of the registry for its lifetime if it has that name, so
// that a node of the same name, built meanwhile, does not destroy it.
class KeptAside {
 public:
  KeptAside(const NetSNMPNode& node, const std::string& name) {
    if (node.mapped_ && node.nodeName_ == name) {
      entry_ = NetSNMPNode::nodeMap_->extract(name);
    }
  }
  ~KeptAside() {
    if (!entry_.empty() && NetSNMPNode::nodeMap_ != nullptr) {
      NetSNMPNode::nodeMap_->insert(std::move(entry_));
    }
  }
  KeptAside(const KeptAside&) = delete;
  KeptAside& operator=(const KeptAside&) = delete;

 private:
  Registry::node_type entry_;
};

// The scalar that owns a cell while it is served: it fires the table's trap,
// and stands in the registry under the row key.
class TransientNode {
 public:
  TransientNode(const NetSNMPTableNode& table, const std::string& rowKey,
                const variable_list& varbind, const NetSNMPNodeData& cell)
      : table_(table, rowKey),
        store_(*table.entryNode_, rowKey),
        node_(new NetSNMPDataNode(
            varbind.name, static_cast<unsigned int>(varbind.name_length),
            rowKey, cell, table.trapCallback_, table.trapName_)),
        watch_(node_) {}
  ~TransientNode() {
    if (watch_.Alive()) delete node_;
  }
  TransientNode(const TransientNode&) = delete;
  TransientNode& operator=(const TransientNode&) = delete;

  NetSNMPDataNode* Get() const { return node_; }

 private:
  // The table being served and its rows survive a row key that is their name.
  const KeptAside table_;
  const KeptAside store_;
  NetSNMPDataNode* const node_;
  const Watch watch_;
};

unsigned int ColumnOf(netsnmp_request_info* request) {
  netsnmp_table_request_info* info = nullptr;
  NetSNMP::extract_snmp_table_info(&info, request);
  return info == nullptr ? 0 : info->colnum;
}

// The stored cell of a column, counted from 1 along the index values and then
// the others; null if there is none.
NetSNMPNodeData* CellOf(const std::vector<NetSNMPNodeData*>& row,
                        unsigned int column) {
  if (column == 0) return nullptr;
  for (const bool index : {true, false}) {
    for (NetSNMPNodeData* value : row) {
      if (value == nullptr || value->isIndex_ != index) continue;
      if (--column == 0) return value;
    }
  }
  return nullptr;
}

// Serves a cell by a copy of its row, which is how a SET leaves the stored row
// as it is.
int ServeCopy(const NetSNMPTableNode& table,
              const std::vector<NetSNMPNodeData*>& row, unsigned int column,
              const std::string& rowKey, variable_list* varbind, int mode) {
  NetSNMPTableRow workingRow(row);
  NetSNMPNodeData* const cell = workingRow.fullRow_[column - 1];
  const TransientNode owner(table, rowKey, *varbind, *cell);
  cell->ownerNode_ = owner.Get();
  return NetSNMP::handle_snmp_request(varbind, cell, mode);
}

// Whether nobody can tell that no copy is made: the value is only read, and no
// node of the row key's name is there to be displaced.
bool MayReadStored(const NetSNMPNodeData& cell, const std::string& rowKey,
                   int mode) {
  return (mode == MODE_GET || mode == MODE_GETNEXT) && IsLibraryValue(cell) &&
         NetSNMPNode::nodeMap_->count(rowKey) == 0;
}

// Serves one cell. Returns false, with the request untouched, if there is no
// such row or the row has no such column; else `result` is the status.
bool ServeCell(const NetSNMPTableNode& table,
               const netsnmp_agent_request_info& requestInfo,
               netsnmp_request_info* request, int& result) {
  if (table.entryNode_ == nullptr) return false;
  const auto* const row =
      ServedRow::Of(*table.entryNode_, requestInfo, request);
  if (row == nullptr) return false;
  const unsigned int column = ColumnOf(request);
  NetSNMPNodeData* const cell = CellOf(*row, column);
  if (cell == nullptr) return false;
  std::string scratch;
  const std::string& key = ServedRow::KeyOf(*table.entryNode_, *row, scratch);
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
    containment::Contain(
        [&] {
          // It may have deleted the table.
          if (applicationCalled) table = FindTable(name);
          applicationCalled = true;
          found = table != nullptr &&
                  ServeCell(*table, *requestInfo, request, result);
        },
        [&](const std::string& what) {
          table = FindTable(name);
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
  containment::Contain(
      [&] {
        if (NetSNMPNode::nodeMap_ == nullptr) return;
        const std::string name = handler->handler_name;
        const auto* const table = FindTable(name);
        known = table != nullptr;
        if (known) status = ServeRequests(table, name, requestInfo, requests);
      },
      [](const std::string&) {});
  return known ? status
               : NetSNMP::set_snmp_request_error(requestInfo, requests, status);
}
