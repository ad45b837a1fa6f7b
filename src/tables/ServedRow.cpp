// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/ServedRow.h"

#include <algorithm>
#include <memory>

#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"
#include "nodes/Watch.h"
#include "tables/RowSelection.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

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

}  // namespace

bool ServedRow::IsStored(const NetSNMPTableEntryNode& entry, const void* row) {
  // Chosen in this very call, it need not be looked for.
  if (entry.selection_ != nullptr &&
      entry.selection_->Holds(static_cast<const Row*>(row))) {
    return true;
  }
  return std::any_of(entry.rows_.begin(), entry.rows_.end(),
                     [&](const auto& stored) { return stored.second == row; });
}

std::vector<NetSNMPNodeData*>* ServedRow::Of(
    const NetSNMPTableEntryNode& entry,
    const netsnmp_agent_request_info_s& requestInfo,
    netsnmp_request_info_s* request) {
  void* context = nullptr;
  NetSNMP::extract_snmp_iterator_context(&context, request);
  if (context == nullptr || !IsStored(entry, context)) return nullptr;
  auto* const row = static_cast<Row*>(context);
  const auto* const watch = static_cast<const Watch*>(
      netsnmp_request_get_list_data(request, kWatchName));
  if (watch != nullptr) return watch->IsOf(row) ? row : nullptr;
  if (requestInfo.mode == MODE_SET_RESERVE1) WatchRow(request, row);
  return row;
}

const std::string& ServedRow::KeyOf(const NetSNMPTableEntryNode& entry,
                                    const Row& row, std::string& scratch) {
  const std::string* const key =
      entry.selection_ == nullptr ? nullptr : entry.selection_->KeyOf(&row);
  if (key != nullptr) return *key;
  entry.GetRowName(row, scratch);
  return scratch;
}
