// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "KnownTable.h"

#include <iterator>
#include <set>

#include "NetSNMPTableNode.h"
#include "support/CellRequest.h"
#include "support/LocalAgent.h"
#include "support/Values.h"

namespace {

constexpr unsigned int kMostIndexes = 4;

Oid TableOid() { return TestOid({2}); }

std::unique_ptr<NetSNMPNodeData> IndexValue(const KnownTable::Index& index) {
  if (index.type == eNodeDataInt) {
    return std::make_unique<NetSNMPIntNodeData>(
        ::Index(Int(static_cast<int>(index.number))));
  }
  return std::make_unique<NetSNMPUnsignedIntNodeData>(
      ::Index(Unsigned(index.number)));
}

// A few numbers, so that rows meet; or any.
std::uint32_t SomeNumber(Input& input) {
  const unsigned int choice = input.Below(8);
  return choice < 7 ? choice : input.U32();
}

}  // namespace

KnownTable::KnownTable(Input& input) {
  std::vector<std::unique_ptr<NetSNMPNodeData>> templates;
  std::vector<NetSNMPNodeData*> indexes;
  for (unsigned int i = 1 + input.Below(kMostIndexes); i > 0; --i) {
    types_.push_back(input.Below(2) == 0 ? eNodeDataInt : eNodeDataUnsignedInt);
    templates.push_back(IndexValue({types_.back(), 0}));
    indexes.push_back(templates.back().get());
  }
  Oid oid = TableOid();
  auto* const table = new NetSNMPTableNode(
      oid.data(), Length(oid), "table",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
      nullptr, "");
  oid.push_back(1);
  store_ = new NetSNMPTableEntryNode(
      oid.data(), Length(oid), "store", "row", indexes,
      static_cast<unsigned int>(types_.size()) + 1, table);
  registration_ = LocalAgent::RegistrationAt(TableOid());
  Require(registration_ != nullptr, "table not registered");
}

KnownTable::Indexes KnownTable::SomeIndexes(Input& input) const {
  const unsigned int unlike = input.U8();
  Indexes indexes;
  for (const eNodeDataType type : types_) {
    indexes.push_back({type, SomeNumber(input)});
  }
  // Values may be of the other type than the template's, more, or fewer.
  if (unlike % 8 == 1) {
    indexes[0].type =
        indexes[0].type == eNodeDataInt ? eNodeDataUnsignedInt : eNodeDataInt;
  }
  if (unlike % 16 == 2) indexes.pop_back();
  if (unlike % 16 == 3) indexes.push_back({eNodeDataInt, SomeNumber(input)});
  return indexes;
}

Oid KnownTable::SomeName(Input& input) const {
  const unsigned int choice = input.Below(8);
  if (choice < 3 && !rows_.empty()) return rows_.at(SomeKey(input)).name;
  if (choice < 6) return NameOf(SomeIndexes(input));
  Oid name = TableOid();
  for (unsigned int i = input.Below(12); i > 0; --i) {
    name.push_back(input.Below(4) == 0 ? input.U32() : input.Below(8));
  }
  return name;
}

void KnownTable::AddRow(const Indexes& indexes) {
  std::vector<std::unique_ptr<NetSNMPNodeData>> values;
  std::vector<NetSNMPNodeData*> row;
  ++lastNumber_;
  for (const Index& index : indexes) values.push_back(IndexValue(index));
  values.push_back(std::make_unique<NetSNMPIntNodeData>(
      Int(static_cast<int>(lastNumber_), eNodeAccessReadWrite)));
  for (const auto& value : values) row.push_back(value.get());
  const bool complete = indexes.size() == types_.size();
  const std::string key = KeyOf(indexes);
  std::string given;
  Require(store_->GetRowName(row, given) == static_cast<int>(indexes.size()) &&
              given == key,
          "wrong row key");
  Require(store_->AddRow(row) == complete, "row wrongly taken or refused");
  if (complete) rows_[key] = {NameOf(indexes), lastNumber_};
}

void KnownTable::RemoveRow(const std::string& key) {
  const bool removed = store_->RemoveRow(key);
  const bool expected = rows_.erase(key) == 1;
  Require(!known_ || removed == expected, "row wrongly removed or kept");
}

std::string KnownTable::SomeKey(Input& input) const {
  if (rows_.empty()) return "none";
  return std::next(rows_.begin(), input.U8() % rows_.size())->first;
}

void KnownTable::RequireWalk() const {
  std::map<Oid, std::set<long>> expected;
  for (const auto& row : rows_) {
    expected[row.second.name].insert(row.second.number);
  }
  // However many rows there are, a walk must end.
  std::size_t steps = 2 * store_->rows_.size() + 2;
  auto next = expected.begin();
  Oid name = TableOid();
  for (;;) {
    CellRequest request(name);
    request.Serve(registration_, MODE_GETNEXT);
    if (request.Type() == ASN_NULL) break;
    Require(--steps > 0, "walk without an end");
    name = request.Name();
    if (request.Type() == ASN_PRIV_RETRY || !known_) continue;
    Require(next != expected.end() && next->first == name,
            "walk comes to another row");
    Require(next->second.count(request.Integer()) == 1, "wrong cell in a walk");
    ++next;
  }
  Require(!known_ || next == expected.end(), "walk misses a row");
}

std::string KnownTable::KeyOf(const Indexes& indexes) const {
  std::string key = "row";
  for (const Index& index : indexes) {
    key += "." + (index.type == eNodeDataInt
                      ? std::to_string(static_cast<int>(index.number))
                      : std::to_string(index.number));
  }
  return key;
}

// As the agent library makes it of the types in the template.
Oid KnownTable::NameOf(const Indexes& indexes) const {
  Oid name = TableOid();
  name.insert(name.end(), {1, types_.size() + 1});
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    const std::uint32_t number = indexes[i].number;
    name.push_back(
        i < types_.size() && types_[i] == eNodeDataInt
            ? static_cast<unsigned long>(static_cast<std::int32_t>(number))
            : number);
  }
  return name;
}
