// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "TablePair.h"

#include <cstring>
#include <memory>

#include "NetSNMPIntNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "RowChanges.h"

namespace agentx = testkit::agentx;

namespace {

constexpr char kTrapName[] = "trap";

std::unique_ptr<NetSNMPNodeData> IndexTemplate(eNodeDataType type) {
  static int number = 0;
  static unsigned int count = 0;
  if (type == eNodeDataInt) {
    return std::make_unique<NetSNMPIntNodeData>(&number, eNodeAccessReadOnly);
  }
  return std::make_unique<NetSNMPUnsignedIntNodeData>(&count,
                                                      eNodeAccessReadOnly);
}

NetSNMPTableNode* BuildTable(std::uint32_t number) {
  std::vector<unsigned long> oid = TableOid(Way::kFast, number);
  const NetSNMPNodeData access(eNodeDataVoid, eNodeAccessReadWrite, nullptr,
                               nullptr);
  return new NetSNMPTableNode(oid.data(), static_cast<unsigned int>(oid.size()),
                              "table" + std::to_string(number), access, nullptr,
                              kTrapName);
}

// Row keys are the same for both ways, as they show in logs.
NetSNMPTableEntryNode* BuildStore(Way way, std::uint32_t number,
                                  const Shape& shape, NetSNMPTableNode* table) {
  std::vector<unsigned long> oid = TableOid(way, number);
  oid.push_back(1);
  std::vector<std::unique_ptr<NetSNMPNodeData>> templates;
  std::vector<NetSNMPNodeData*> indexes;
  for (const eNodeDataType type : shape.indexes) {
    templates.push_back(IndexTemplate(type));
    indexes.push_back(templates.back().get());
  }
  const std::string name =
      (way == Way::kFast ? "fastRows" : "plainRows") + std::to_string(number);
  return new NetSNMPTableEntryNode(
      oid.data(), static_cast<unsigned int>(oid.size()), name,
      "row" + std::to_string(number), indexes, shape.columns, table);
}

}  // namespace

std::vector<unsigned long> TableOid(Way way, std::uint32_t number) {
  return {1, 3, 6, 1, 4, 1, 32473, static_cast<unsigned long>(way), number};
}

bool operator==(const Variables& a, const Variables& b) {
  return a.number == b.number && a.count == b.count && a.text == b.text &&
         std::strcmp(a.label, b.label) == 0 && a.enabled == b.enabled &&
         std::memcmp(a.address, b.address, sizeof a.address) == 0;
}

TablePair::TablePair(std::uint32_t number, const Shape& shape, Random& random)
    : number_(number),
      fast_(BuildTable(number)),
      fastRows_{shape, BuildStore(Way::kFast, number, shape, fast_), {}},
      plainRows_{shape, BuildStore(Way::kPlain, number, shape, nullptr), {}},
      plain_(TableOid(Way::kPlain, number), "plain" + std::to_string(number),
             *plainRows_.store, kTrapName) {
  for (int i = 0; i < shape.rows; ++i) {
    Random same = random;
    AddRandomRow(fastRows_, same);
    AddRandomRow(plainRows_, random);
  }
}

void TablePair::Change(Random& random) {
  Random same = random;
  ChangeRows(fastRows_, same);
  ChangeRows(plainRows_, random);
}

agentx::Oid TablePair::SomeIndex(Random& random) const {
  agentx::Oid index;
  const auto& stored = plainRows_.store->rows_;
  if (stored.empty()) return index;
  for (const NetSNMPNodeData* value : *random.Element(stored).second) {
    const void* const number = value->NodeDataValue();
    if (!value->isIndex_ || number == nullptr) continue;
    if (value->dataType_ == eNodeDataInt) {
      index.push_back(
          static_cast<std::uint32_t>(*static_cast<const int*>(number)));
    } else if (value->dataType_ == eNodeDataUnsignedInt) {
      index.push_back(*static_cast<const unsigned int*>(number));
    }
  }
  return index;
}

std::string TablePair::CursorText(Way way) const {
  const NetSNMPTableEntryNode& store = *RowsOf(way).store;
  return store.rowCursor_ == store.rows_.end() ? "the end"
                                               : store.rowCursor_->first;
}
