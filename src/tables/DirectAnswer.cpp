// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/DirectAnswer.h"

#include <algorithm>

#include "NetSNMP.h"
#include "NetSNMPTableNode.h"

namespace {

// Gives the request the name of the chosen row's cell in its column.
void Rename(const netsnmp_handler_registration& table,
            netsnmp_request_info* request, const RowIndex::Oid& index) {
  oid name[MAX_OID_LEN];
  oid* end = std::copy_n(request->requestvb->name, table.rootoid_len + 2, name);
  end = std::copy(index.begin(), index.end(), end);
  snmp_set_var_objid(request->requestvb, name,
                     static_cast<std::size_t>(end - name));
}

void AddContext(netsnmp_request_info* request, const RowIndex::Row* row) {
  netsnmp_request_add_list_data(
      request,
      netsnmp_create_data_list(TABLE_ITERATOR_NAME,
                               const_cast<RowIndex::Row*>(row), nullptr));
}

bool WalksTheTablesRows(const netsnmp_mib_handler& iterator) {
  if (iterator.access_method != netsnmp_table_iterator_helper_handler ||
      iterator.myvoid == nullptr) {
    return false;
  }
  const auto& info = *static_cast<netsnmp_iterator_info*>(iterator.myvoid);
  return info.get_first_data_point == table_get_first_data_point &&
         info.get_next_data_point == table_get_next_data_point;
}

}  // namespace

bool direct_answer::IsTheIterators(
    const netsnmp_mib_handler& iterator,
    const netsnmp_handler_registration& registration,
    const netsnmp_request_info* requests, const std::vector<Choice>& choices) {
  if (!WalksTheTablesRows(iterator)) return false;
  const std::size_t prefix = registration.rootoid_len + 2;
  const auto& table =
      *static_cast<netsnmp_iterator_info*>(iterator.myvoid)->table_reginfo;
  auto choice = choices.begin();
  for (; requests != nullptr; requests = requests->next) {
    if (requests->processed != 0) continue;
    const oid column = requests->requestvb->name[prefix - 1];
    if (column < table.min_column || column > table.max_column ||
        prefix + (*choice++)->first.size() > MAX_OID_LEN) {
      return false;
    }
  }
  return true;
}

int direct_answer::Give(netsnmp_mib_handler* iterator,
                        netsnmp_handler_registration* registration,
                        netsnmp_agent_request_info* requestInfo,
                        netsnmp_request_info* requests,
                        const std::vector<Choice>& choices) {
  const int mode = requestInfo->mode;
  auto choice = choices.begin();
  for (auto* request = requests; request != nullptr; request = request->next) {
    if (request->processed != 0) continue;
    const auto& [index, place] = **choice++;
    if (mode == MODE_GETNEXT) Rename(*registration, request, index);
    AddContext(request, place.row);
  }
  requestInfo->mode = MODE_GET;
  const int status =
      netsnmp_call_next_handler(iterator, registration, requestInfo, requests);
  requestInfo->mode = mode;
  return status;
}
