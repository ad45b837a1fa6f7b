// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "PlainTable.h"

#include <utility>

#include "NetSNMP.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPTableRow.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

variable_list* HandOut(Row* row, void** dataContext, variable_list* indexes) {
  if (row == nullptr) return nullptr;
  *dataContext = row;
  NetSNMPTableRow workingRow(*row);
  set_data_point_indices(workingRow, indexes);
  return indexes;
}

}  // namespace

PlainTable::PlainTable(const std::vector<unsigned long>& oid, std::string name,
                       NetSNMPTableEntryNode& store, std::string trapName)
    : oid_(oid),
      name_(std::move(name)),
      store_(store),
      trapName_(std::move(trapName)) {}

void PlainTable::Register() {
  auto* const columns = SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  for (const NetSNMPNodeData* index : store_.indexTemplate_) {
    netsnmp_table_helper_add_index(columns, index->NodeIndexASNDataType());
  }
  columns->min_column =
      static_cast<unsigned int>(store_.indexTemplate_.size()) + 1;
  columns->max_column = store_.columnCount_;
  auto* const info = SNMP_MALLOC_TYPEDEF(netsnmp_iterator_info);
  info->get_first_data_point = GetFirst;
  info->get_next_data_point = GetNext;
  info->table_reginfo = columns;
  info->myvoid = this;
  netsnmp_handler_registration* const registration =
      netsnmp_create_handler_registration(name_.c_str(), Handle, oid_.data(),
                                          oid_.size(), HANDLER_CAN_RWRITE);
  registration->my_reg_void = this;
  netsnmp_register_table_iterator(registration, info);
}

variable_list* PlainTable::GetFirst(void** loopContext, void** dataContext,
                                    variable_list* indexes,
                                    netsnmp_iterator_info* info) {
  auto* const table = static_cast<PlainTable*>(info->myvoid);
  *loopContext = table;
  return HandOut(table->store_.GetFirstRow(), dataContext, indexes);
}

variable_list* PlainTable::GetNext(void** loopContext, void** dataContext,
                                   variable_list* indexes,
                                   netsnmp_iterator_info* /*info*/) {
  auto* const table = static_cast<PlainTable*>(*loopContext);
  return HandOut(table->store_.GetNextRow(), dataContext, indexes);
}

int PlainTable::Handle(netsnmp_mib_handler* /*handler*/,
                       netsnmp_handler_registration* registration,
                       netsnmp_agent_request_info* info,
                       netsnmp_request_info* requests) {
  const auto* const table = static_cast<PlainTable*>(registration->my_reg_void);
  int last = SNMP_ERR_NOERROR;
  for (auto* request = requests; request != nullptr; request = request->next) {
    if (request->processed != 0) continue;
    const int status = table->Serve(*info, request);
    NetSNMP::set_snmp_request_error(info, request, status);
    if (status != SNMP_NOSUCHINSTANCE) last = status;
  }
  return last;
}

int PlainTable::Serve(const netsnmp_agent_request_info& info,
                      netsnmp_request_info* request) const {
  const auto* const row =
      static_cast<Row*>(netsnmp_extract_iterator_context(request));
  if (row == nullptr) return SNMP_NOSUCHINSTANCE;
  const NetSNMPTableRow workingRow(*row);
  const unsigned int column = netsnmp_extract_table_info(request)->colnum;
  if (column == 0 || column > workingRow.fullRow_.size()) {
    return SNMP_NOSUCHINSTANCE;
  }
  NetSNMPNodeData* const cell = workingRow.fullRow_[column - 1];
  std::string key;
  store_.GetRowName(*row, key);
  variable_list* const varbind = request->requestvb;
  NetSNMPDataNode owner(varbind->name,
                        static_cast<unsigned int>(varbind->name_length), key,
                        *cell, nullptr, trapName_);
  cell->ownerNode_ = &owner;
  return NetSNMP::handle_snmp_request(varbind, cell, info.mode);
}
