// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/ServedRow.h"

#include <algorithm>
#include <memory>

#include "NetSNMP.h"
#include "NetSNMPTableEntryNode.h"
#include "adapter/RequestHold.h"
#include "tables/RowPin.h"
#include "tables/RowSelection.h"

namespace {

using Row = std::vector<NetSNMPNodeData*>;

// The name under which a request carries its pin from the first phase of a SET
// to the last.
constexpr char kPinName[] = "snmpsubagent_row_pin";

void Pin(netsnmp_request_info* request, const Row* row) {
  KeepWithRequest(request, kPinName, std::make_unique<RowPin>(row));
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
  const auto* const pin = static_cast<const RowPin*>(
      netsnmp_request_get_list_data(request, kPinName));
  if (pin != nullptr) return pin->Holds(row) ? row : nullptr;
  if (requestInfo.mode == MODE_SET_RESERVE1) Pin(request, row);
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
