// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstring>
#include <memory>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "RowChanges.h"

namespace {

using Value = std::unique_ptr<NetSNMPNodeData>;

// Numbers close together, so that rows meet, and some at the edges.
int RandomIndex(Random& random) {
  if (random.OneIn(8)) {
    return random.OneOf({0, -1, -2, 255, 256, 2147483647, -2147483647 - 1});
  }
  return random.Between(0, random.OneIn(3) ? 9 : 60);
}

void Fill(Variables& variables, Random& random) {
  const int number = RandomIndex(random);
  variables.number = number;
  variables.count = static_cast<unsigned int>(number);
  variables.text = std::string(random.Below(70), 't');
  std::memset(variables.label, 'l', random.Below(50));
  variables.enabled = random.OneIn(2);
  variables.address[0] = static_cast<unsigned char>(number);
}

// A value of that type, over the variables or a copy of them.
Value MakeValue(eNodeDataType type, Variables& variables, eNodeAccessMode mode,
                bool copy) {
  switch (type) {
    case eNodeDataInt:
      return std::make_unique<NetSNMPIntNodeData>(&variables.number, mode,
                                                  copy);
    case eNodeDataUnsignedInt:
      return std::make_unique<NetSNMPUnsignedIntNodeData>(&variables.count,
                                                          mode, copy);
    case eNodeDataString:
      return std::make_unique<NetSNMPStringNodeData>(&variables.text, mode,
                                                     copy);
    case eNodeDataChar:
      return std::make_unique<NetSNMPCharNodeData>(variables.label, mode, copy);
    case eNodeDataBool:
      return std::make_unique<NetSNMPBoolNodeData>(&variables.enabled, mode,
                                                   copy);
    case eNodeDataByte:
      return std::make_unique<NetSNMPByteNodeData>(
          variables.address, sizeof variables.address, mode, copy);
    default:
      return std::make_unique<NetSNMPNodeData>(type, mode, nullptr, nullptr);
  }
}

Value RandomCell(Rows& rows, Random& random) {
  static constexpr auto kTypes = {eNodeDataInt,    eNodeDataUnsignedInt,
                                  eNodeDataString, eNodeDataChar,
                                  eNodeDataBool,   eNodeDataByte};
  const eNodeDataType type =
      random.OneIn(20) ? eNodeDataVoid : random.OneOf(kTypes);
  const eNodeAccessMode mode = random.OneOf(
      {eNodeAccessReadWrite, eNodeAccessReadWrite, eNodeAccessReadOnly,
       eNodeAccessDefault, eNodeAccessWriteOnly});
  Fill(rows.variables.emplace_back(), random);
  return MakeValue(type, rows.variables.back(), mode, random.OneIn(2));
}

Value RandomIndexValue(eNodeDataType type, Rows& rows, Random& random) {
  const bool copy = !rows.shape.odd || !random.OneIn(10);
  Fill(rows.variables.emplace_back(), random);
  Value value =
      MakeValue(type, rows.variables.back(), eNodeAccessReadOnly, copy);
  value->isIndex_ = true;
  return value;
}

}  // namespace

void AddRandomRow(Rows& rows, Random& random) {
  std::vector<Value> values;
  for (const eNodeDataType type : rows.shape.indexes) {
    values.push_back(RandomIndexValue(type, rows, random));
  }
  // A row may have more or fewer cells than the table has columns.
  const int cells =
      static_cast<int>(rows.shape.columns - rows.shape.indexes.size());
  const int present = random.OneIn(5) ? random.Between(0, cells + 1) : cells;
  for (int i = 0; i < present; ++i) values.push_back(RandomCell(rows, random));
  // Its values may be in any order, and an index may be no number.
  if (random.OneIn(4)) std::swap(values.front(), values.back());
  if (rows.shape.odd && random.OneIn(25)) {
    values.push_back(RandomIndexValue(eNodeDataString, rows, random));
    if (random.OneIn(2)) std::swap(values.front(), values.back());
  }
  std::vector<NetSNMPNodeData*> row;
  for (const Value& value : values) row.push_back(value.get());
  rows.store->AddRow(row);
}
