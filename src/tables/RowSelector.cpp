// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelector.h"

#include <algorithm>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "adapter/ExceptionBarrier.h"
#include "nodes/NodeLookup.h"
#include "tables/RowSelection.h"

namespace {

// Whether the iterator looks for rows in this mode. In the later phases of a
// SET it keeps to the rows that it has found in the first.
bool LooksForRows(int mode) {
  return mode == MODE_GET || mode == MODE_GETNEXT || mode == MODE_SET_RESERVE1;
}

// The number of sub-identifiers before the index of a cell: those of the table,
// the entry and the column.
std::size_t PrefixLength(const netsnmp_handler_registration& table) {
  return table.rootoid_len + 2;
}

// The index in a requested OID; false if the OID does not begin with table,
// entry and column.
bool IndexPart(const netsnmp_handler_registration& table,
               const variable_list& requested, unsigned int column,
               RowIndex::OidView& index) {
  const std::size_t start = PrefixLength(table);
  if (requested.name_length < start ||
      !std::equal(table.rootoid, table.rootoid + table.rootoid_len,
                  requested.name) ||
      requested.name[start - 2] != 1 || requested.name[start - 1] != column) {
    return false;
  }
  index = {requested.name + start, requested.name + requested.name_length};
  return true;
}

// Selects the rows that can match a request.
Lookup SelectFor(const netsnmp_handler_registration& table, int mode,
                 netsnmp_request_info* request, RowSelection& selection) {
  netsnmp_table_request_info* info = nullptr;
  NetSNMP::extract_snmp_table_info(&info, request);
  if (info == nullptr) return Lookup::kWalkAll;
  RowIndex::OidView index = {};
  const bool hasIndex =
      IndexPart(table, *request->requestvb, info->colnum, index);
  if (mode == MODE_GETNEXT) {
    return hasIndex ? selection.AddNext(request, index) : selection.AddFirst();
  }
  return hasIndex ? selection.AddExact(request, index) : Lookup::kCandidates;
}

// Selects the rows that can match the open requests. Returns how the rows of
// all requests are found.
Lookup Select(const netsnmp_handler_registration& table, int mode,
              netsnmp_request_info* requests, RowSelection& selection) {
  Lookup lookup = selection.AddVolatile();
  for (auto* request = requests;
       request != nullptr && lookup != Lookup::kWalkAll;
       request = request->next) {
    if (request->processed != 0) continue;
    lookup = std::min(lookup, SelectFor(table, mode, request, selection));
  }
  return lookup;
}

// Whether the hooks are ours: an application may have replaced them.
bool HasOurHooks(const netsnmp_iterator_info& info) {
  return info.get_first_data_point == table_get_first_data_point &&
         info.get_next_data_point == table_get_next_data_point;
}

// Whether the requests can be responded to without the iterator, with the same
// result: it does not find the row of a column that the table lacks.
bool CanAnswerDirectly(const netsnmp_mib_handler& iterator,
                       const netsnmp_handler_registration& table,
                       const RowSelection::Matches& matches) {
  if (iterator.access_method != netsnmp_table_iterator_helper_handler ||
      iterator.myvoid == nullptr) {
    return false;
  }
  const auto& info = *static_cast<netsnmp_iterator_info*>(iterator.myvoid);
  if (!HasOurHooks(info)) return false;
  const std::size_t prefix = PrefixLength(table);
  return std::all_of(matches.begin(), matches.end(), [&](const auto& match) {
    const oid column = match.request->requestvb->name[prefix - 1];
    return column >= info.table_reginfo->min_column &&
           column <= info.table_reginfo->max_column &&
           prefix + match.index->size() <= MAX_OID_LEN;
  });
}

// Sets the OID of the request to that of the cell in its column and the
// matching row.
void Rename(const netsnmp_handler_registration& table,
            const RowSelection::Match& match) {
  variable_list* const varbind = match.request->requestvb;
  oid name[MAX_OID_LEN];
  oid* end = std::copy_n(varbind->name, PrefixLength(table), name);
  end = std::copy(match.index->begin(), match.index->end(), end);
  snmp_set_var_objid(varbind, name, static_cast<std::size_t>(end - name));
}

// What the iterator leaves with a request: the row that it has found.
void AddContext(const RowSelection::Match& match) {
  netsnmp_request_add_list_data(
      match.request, netsnmp_create_data_list(TABLE_ITERATOR_NAME,
                                              match.place->second, nullptr));
}

// Does what the iterator does with the matching rows: calls the handler after
// it for a GET of each. Returns what that handler returns.
int AnswerDirectly(netsnmp_mib_handler* iterator,
                   netsnmp_handler_registration* registration,
                   netsnmp_agent_request_info* requestInfo,
                   netsnmp_request_info* requests,
                   const RowSelection::Matches& matches) {
  const int mode = requestInfo->mode;
  for (const RowSelection::Match& match : matches) {
    if (mode == MODE_GETNEXT) Rename(*registration, match);
    AddContext(match);
  }
  requestInfo->mode = MODE_GET;
  const int status =
      netsnmp_call_next_handler(iterator, registration, requestInfo, requests);
  requestInfo->mode = mode;
  return status;
}

NetSNMPTableEntryNode* StoreOf(const netsnmp_handler_registration& table) {
  const auto* const node =
      node_lookup::Find<NetSNMPTableNode>(table.handlerName);
  return node == nullptr ? nullptr : node->entryNode_;
}

int SelectRows(netsnmp_mib_handler* handler,
               netsnmp_handler_registration* registration,
               netsnmp_agent_request_info* requestInfo,
               netsnmp_request_info* requests) {
  const NetSNMPAgentGuard guard;
  const int mode = requestInfo->mode;
  NetSNMPTableEntryNode* const store = StoreOf(*registration);
  if (store == nullptr || !LooksForRows(mode)) {
    return netsnmp_call_next_handler(handler, registration, requestInfo,
                                     requests);
  }
  RowSelection selection(*store);
  Lookup lookup = Lookup::kWalkAll;
  // Without memory for the selection, the iterator walks all rows.
  exception_barrier::Run(
      [&] { lookup = Select(*registration, mode, requests, selection); },
      [](const std::string&) {});
  selection.Activate(lookup);
  // The later phases of a SET need what the iterator remembers of the first.
  if (lookup == Lookup::kExact && mode != MODE_SET_RESERVE1 &&
      CanAnswerDirectly(*handler->next, *registration,
                        selection.AllMatches())) {
    selection.EndWalk(mode == MODE_GET);
    return AnswerDirectly(handler->next, registration, requestInfo, requests,
                          selection.AllMatches());
  }
  return netsnmp_call_next_handler(handler, registration, requestInfo,
                                   requests);
}

}  // namespace

void row_selector::PutBeforeIterator(
    netsnmp_handler_registration_s* registration) {
  netsnmp_mib_handler* const selector =
      netsnmp_create_handler("snmpsubagent_row_selector", SelectRows);
  if (selector == nullptr) return;
  if (netsnmp_inject_handler_before(registration, selector,
                                    TABLE_ITERATOR_NAME) != SNMPERR_SUCCESS) {
    netsnmp_handler_free(selector);
  }
}
