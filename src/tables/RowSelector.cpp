// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelector.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "adapter/Containment.h"
#include "nodes/NodeLookup.h"
#include "tables/DirectAnswer.h"
#include "tables/RowSelection.h"

namespace {

// Whether the iterator looks for rows in this mode; in the others it keeps to
// those it chose before.
bool LooksForRows(int mode) {
  return mode == MODE_GET || mode == MODE_GETNEXT || mode == MODE_SET_RESERVE1;
}

// The index part of a requested OID, behind table, entry and column; false if
// the OID does not begin with these.
bool IndexPart(const netsnmp_handler_registration& table,
               const variable_list& requested, unsigned int column,
               RowIndex::OidView& index) {
  const std::size_t start = table.rootoid_len + 2;
  if (requested.name_length < start ||
      snmp_oid_ncompare(requested.name, requested.name_length, table.rootoid,
                        table.rootoid_len, table.rootoid_len) != 0 ||
      requested.name[start - 2] != 1 || requested.name[start - 1] != column) {
    return false;
  }
  index = {requested.name + start, requested.name + requested.name_length};
  return true;
}

// The rows for the open requests, one each.
using Choices = std::vector<RowSelection::Choice>;

// Selects what one request can be answered with, and makes its choice.
bool SelectFor(const netsnmp_handler_registration& table, int mode,
               netsnmp_request_info* request, RowSelection& selection,
               RowSelection::Choice& choice) {
  netsnmp_table_request_info* info = nullptr;
  NetSNMP::extract_snmp_table_info(&info, request);
  if (info == nullptr) return false;
  RowIndex::OidView index = {};
  const bool hasIndex =
      IndexPart(table, *request->requestvb, info->colnum, index);
  if (mode != MODE_GETNEXT) {
    return !hasIndex || selection.AddExact(index, choice);
  }
  return hasIndex ? selection.AddAfter(index, choice) : selection.AddFirst();
}

// Selects what all requests can be answered with, and puts it to work. Returns
// whether all choices are made.
bool Select(const netsnmp_handler_registration& table, int mode,
            netsnmp_request_info* requests, RowSelection& selection,
            Choices& choices) {
  if (!selection.AddFloating()) return false;
  bool certain = true;
  for (auto* request = requests; request != nullptr; request = request->next) {
    if (request->processed != 0) continue;
    RowSelection::Choice choice = nullptr;
    if (!SelectFor(table, mode, request, selection, choice)) return false;
    choices.push_back(choice);
    certain = certain && choice != nullptr;
  }
  selection.Activate();
  return certain;
}

NetSNMPTableEntryNode* EntryOf(const netsnmp_handler_registration& table) {
  const auto* const node =
      node_lookup::Find<NetSNMPTableNode>(table.handlerName);
  return node == nullptr ? nullptr : node->entryNode_;
}

int SelectRows(netsnmp_mib_handler* handler,
               netsnmp_handler_registration* registration,
               netsnmp_agent_request_info* requestInfo,
               netsnmp_request_info* requests) {
  const NetSNMPAgentGuard guard;
  NetSNMPTableEntryNode* const entry = EntryOf(*registration);
  if (entry == nullptr || !LooksForRows(requestInfo->mode)) {
    return netsnmp_call_next_handler(handler, registration, requestInfo,
                                     requests);
  }
  RowSelection selection(*entry);
  Choices choices;
  const int mode = requestInfo->mode;
  bool certain = false;
  // What fails here, for want of memory, leaves all rows to the iterator.
  containment::Contain(
      [&] {
        certain = Select(*registration, mode, requests, selection, choices);
      },
      [](const std::string&) {});
  // A SET comes back in later phases, with what the iterator remembers of it.
  if (certain && mode != MODE_SET_RESERVE1 &&
      direct_answer::IsTheIterators(*handler->next, *registration, requests,
                                    choices)) {
    selection.EndWalk(mode == MODE_GET);
    return direct_answer::Give(handler->next, registration, requestInfo,
                               requests, choices);
  }
  return netsnmp_call_next_handler(handler, registration, requestInfo,
                                   requests);
}

}  // namespace

void PutRowSelectorBeforeIterator(
    netsnmp_handler_registration_s* registration) {
  netsnmp_mib_handler* const selector =
      netsnmp_create_handler("snmpsubagent_row_selector", SelectRows);
  if (selector == nullptr) return;
  if (netsnmp_inject_handler_before(registration, selector,
                                    TABLE_ITERATOR_NAME) != SNMPERR_SUCCESS) {
    netsnmp_handler_free(selector);
  }
}
