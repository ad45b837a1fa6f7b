// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/ServedRow.h"

#include <algorithm>

#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"
#include "tables/RowPin.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

// The name under which a request carries its pin from the first phase of a SET
// to the last.
constexpr char kPinName[] = "snmpsubagent_row_pin";

Row* ChosenRow(const NetSNMPTableEntryNode& entry,
               netsnmp_request_info* request) {
  void* context = nullptr;
  NetSNMP::extract_snmp_iterator_context(&context, request);
  if (context == nullptr) return nullptr;
  const auto stored =
      std::find_if(entry.rows_.begin(), entry.rows_.end(),
                   [&](const auto& row) { return row.second == context; });
  return stored == entry.rows_.end() ? nullptr : stored->second;
}

void Pin(netsnmp_request_info* request, const Row* row) {
  netsnmp_request_add_list_data(
      request,
      netsnmp_create_data_list(kPinName, new RowPin(row), [](void* pin) {
        delete static_cast<RowPin*>(pin);
      }));
}

}  // namespace

std::vector<NetSNMPNodeData*>* ServedRow(
    const NetSNMPTableEntryNode& entry,
    const netsnmp_agent_request_info_s& requestInfo,
    netsnmp_request_info_s* request) {
  Row* const row = ChosenRow(entry, request);
  if (row == nullptr) return nullptr;
  const auto* const pin = static_cast<const RowPin*>(
      netsnmp_request_get_list_data(request, kPinName));
  if (pin != nullptr) return pin->Holds(row) ? row : nullptr;
  if (requestInfo.mode == MODE_SET_RESERVE1) Pin(request, row);
  return row;
}
