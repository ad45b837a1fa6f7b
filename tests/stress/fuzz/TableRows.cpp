// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <array>
#include <cstdint>
#include <deque>

#include "Input.h"
#include "KnownTable.h"
#include "QuietAgent.h"
#include "support/CellRequest.h"
#include "support/FakeSubAgent.h"
#include "support/ScopedRegistry.h"
#include "support/Values.h"

// Rows that come and go under any keys, between requests for any cells and
// between the phases of a SET. A reference says what a walk shows.

namespace {

void ChangeRows(Input& input, KnownTable& table) {
  switch (input.Below(4)) {
    case 0:
      return table.RemoveRow(table.SomeKey(input));
    case 1:
      return table.RemoveRow(input.Bytes(40));
    default:
      return table.AddRow(table.SomeIndexes(input));
  }
}

// What an application can do to a row that the store has handed out.
void ChangeHandedOut(Input& input, KnownTable& table) {
  NetSNMPTableEntryNode& store = table.Store();
  std::vector<NetSNMPNodeData*>* row = store.GetRow(table.SomeKey(input));
  if (input.Below(4) == 0) {
    row = store.GetFirstRow();
    for (unsigned int i = input.Below(4); i > 0; --i) row = store.GetNextRow();
  }
  if (row == nullptr || row->empty()) return;
  table.LoseTrack();
  NetSNMPNodeData*& value = (*row)[input.Below(
      static_cast<unsigned int>(std::min<std::size_t>(row->size(), 256)))];
  switch (input.Below(6)) {
    case 0:
      delete value;
      value = nullptr;
      break;
    case 1:
      if (value != nullptr) value->isIndex_ = !value->isIndex_;
      break;
    case 2:
      if (value != nullptr) value->DeleteLocalData();
      break;
    case 3:
      NetSNMPNodeData::CatDataVector(*row, Text(input.Bytes(60)));
      break;
    case 4:
      delete value;
      value = new NetSNMPNodeData(static_cast<eNodeDataType>(input.Below(8)),
                                  eNodeAccessReadWrite, nullptr, nullptr);
      value->isIndex_ = input.Below(2) == 0;
      break;
    default:
      if (value != nullptr) {
        value->NodeDataValue(static_cast<int>(input.U32()), false);
        value->NodeDataValue(static_cast<unsigned int>(input.U32()), false);
      }
  }
}

// One to three cells in one request.
void Ask(Input& input, KnownTable& table, int mode) {
  std::deque<CellRequest> requests;
  for (unsigned int i = 1 + input.Below(3); i > 0; --i) {
    requests.emplace_back(table.SomeName(input));
    if (requests.size() > 1)
      requests[requests.size() - 2].Append(requests.back());
  }
  requests.front().Serve(table.Registration(), mode);
}

void Set(Input& input, KnownTable& table) {
  constexpr std::array<int, 6> kModes{MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                                      MODE_SET_ACTION,   MODE_SET_COMMIT,
                                      MODE_SET_FREE,     MODE_SET_UNDO};
  CellRequest request(table.SomeName(input));
  const unsigned char type = input.Below(2) == 0 ? ASN_INTEGER : input.U8();
  request.SetBytes(type, input.Bytes(100));
  for (unsigned int i = 0; i < kModes.size() && !input.AtEnd(); ++i) {
    const unsigned int choice = input.U8();
    // Mostly in order.
    request.Serve(table.Registration(),
                  kModes[choice < 200 ? i : choice % kModes.size()]);
    if (input.Below(4) == 0) ChangeRows(input, table);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  static const QuietAgent agent;
  Input input(data, size);
  const FakeSubAgent subAgent(true);
  const ScopedRegistry registry;
  KnownTable table(input);
  while (!input.AtEnd()) {
    switch (input.Below(8)) {
      case 0:
        Ask(input, table, MODE_GET);
        break;
      case 1:
        Ask(input, table, MODE_GETNEXT);
        break;
      case 2:
        Set(input, table);
        break;
      case 3:
        table.RequireWalk();
        break;
      case 4:
        if (input.Below(4) == 0) ChangeHandedOut(input, table);
        break;
      default:
        ChangeRows(input, table);
    }
  }
  table.RequireWalk();
  return 0;
}
