// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/ServedRow.h"

#include <algorithm>
#include <cstdlib>

#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

// The name under which a request carries the stamp of its row from the first
// phase of a SET to the last.
constexpr char kStampName[] = "snmpsubagent_row_stamp";

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

const unsigned long* StampOf(netsnmp_request_info* request) {
  return static_cast<const unsigned long*>(
      netsnmp_request_get_list_data(request, kStampName));
}

void KeepStamp(netsnmp_request_info* request, unsigned long stamp) {
  auto* const kept =
      static_cast<unsigned long*>(std::malloc(sizeof(unsigned long)));
  if (kept == nullptr) return;
  *kept = stamp;
  netsnmp_request_add_list_data(
      request, netsnmp_create_data_list(kStampName, kept, std::free));
}

}  // namespace

std::vector<NetSNMPNodeData*>* ServedRow::Of(
    NetSNMPTableEntryNode& entry,
    const netsnmp_agent_request_info_s& requestInfo,
    netsnmp_request_info_s* request) {
  Row* const row = ChosenRow(entry, request);
  if (row == nullptr) return nullptr;
  const unsigned long stamp = entry.RowStamp(row);
  const unsigned long* const kept = StampOf(request);
  if (kept != nullptr) return *kept == stamp ? row : nullptr;
  if (requestInfo.mode == MODE_SET_RESERVE1) KeepStamp(request, stamp);
  return row;
}
