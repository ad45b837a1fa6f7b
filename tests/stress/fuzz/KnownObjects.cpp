// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "KnownObjects.h"

#include <algorithm>

namespace known {
namespace {

wire::Value ValueOf(const Column& column, const State& state) {
  if (state.status != kAbsent && column.kind == Kind::Status) {
    return {wire::Type::kInteger, std::int32_t{state.status}};
  }
  const auto cell = state.cells.find(column.cell);
  return state.status != kAbsent && cell != state.cells.end()
             ? cell->second
             : wire::Value{wire::Type::kNoSuchInstance, {}};
}

}  // namespace

wire::Oid NameOf(const Object& object, std::uint32_t column,
                 const wire::Oid& index) {
  wire::Oid name = object.name;
  if (!object.store->isScalar) {
    name.push_back(1);
    name.push_back(column);
  }
  name.insert(name.end(), index.begin(), index.end());
  return name;
}

bool operator==(const State& a, const State& b) {
  return a.status == b.status && a.cells == b.cells;
}

std::size_t Store::Size() const {
  return static_cast<std::size_t>(std::count_if(
      units.begin(), units.end(),
      [](const auto& unit) { return unit.second.state.status != kAbsent; }));
}

Values ValuesOf(const Objects& objects, bool absent) {
  Values values;
  for (const auto& [name, object] : objects) {
    for (const auto& [number, column] : object.columns) {
      for (const auto& [index, unit] : object.store->units) {
        wire::Value value = ValueOf(column, unit.state);
        if (absent || value.type != wire::Type::kNoSuchInstance) {
          values.emplace(NameOf(object, number, index), std::move(value));
        }
      }
    }
  }
  return values;
}

}  // namespace known
