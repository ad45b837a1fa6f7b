// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "RandomRequests.h"

#include <string>

namespace agentx = testkit::agentx;

namespace {

constexpr int kMostVarbinds = 5;
constexpr int kMostRepetitions = 15;

agentx::Oid Root() {
  const std::vector<unsigned long> table = TableOid(Way::kFast, 0);
  return {table.begin(), table.end() - 1};
}

std::uint32_t OddSubid(Random& random) {
  return random.OneOf<std::uint32_t>(
      {0, 1, 2, 127, 128, 2147483647, 2147483648, 4294967294, 4294967295});
}

}  // namespace

agentx::Body RandomRequests::Read() {
  switch (random_.Below(5)) {
    case 0:
    case 1:
      return agentx::Get{Ranges()};
    case 2:
    case 3:
      return agentx::GetNext{Ranges()};
    default:
      return agentx::GetBulk{
          static_cast<std::uint16_t>(random_.Below(3)),
          static_cast<std::uint16_t>(random_.Below(kMostRepetitions)),
          Ranges()};
  }
}

std::vector<agentx::Varbind> RandomRequests::Write() {
  std::vector<agentx::Varbind> varbinds;
  for (int i = random_.Between(1, kMostVarbinds); i > 0; --i) {
    varbinds.push_back({Name(), Value()});
  }
  // Some write one object twice.
  if (varbinds.size() > 1 && random_.OneIn(10)) {
    varbinds.back().name = varbinds.front().name;
  }
  return varbinds;
}

// The name of a cell, mostly one that there is; seldom something shorter.
agentx::Oid RandomRequests::Name() {
  const TablePair& table = random_.Element(tables_);
  agentx::Oid name = Root();
  name.push_back(table.Number());
  if (random_.OneIn(30)) return name;
  name.push_back(random_.OneIn(20) ? random_.Below(4) : 1);
  if (random_.OneIn(30)) return name;
  name.push_back(random_.OneIn(20)
                     ? OddSubid(random_)
                     : static_cast<std::uint32_t>(random_.Between(
                           0, static_cast<int>(table.TheShape().columns) + 1)));
  const agentx::Oid index = Index(table);
  name.insert(name.end(), index.begin(), index.end());
  return name;
}

agentx::Oid RandomRequests::Index(const TablePair& table) {
  agentx::Oid index = table.SomeIndex(random_);
  if (index.empty()) {
    index.assign(table.TheShape().indexes.size(), random_.Below(20));
  }
  switch (random_.Below(8)) {
    case 0:  // a neighbour
      random_.Element(index) += random_.OneOf<std::uint32_t>({1, 4294967295});
      break;
    case 1:  // a part
      index.resize(random_.Below(index.size() + 1));
      break;
    case 2:  // more than there is
      index.push_back(OddSubid(random_));
      break;
    case 3:
      random_.Element(index) = OddSubid(random_);
      break;
    default:
      break;
  }
  return index;
}

agentx::SearchRange RandomRequests::Range() {
  agentx::SearchRange range{Name(), random_.OneIn(6), {}};
  if (random_.OneIn(2)) {
    range.end = Root();
    range.end.push_back(range.start.at(Root().size()) + 1);
  } else if (random_.OneIn(3)) {
    range.end = Name();
  }
  return range;
}

std::vector<agentx::SearchRange> RandomRequests::Ranges() {
  std::vector<agentx::SearchRange> ranges;
  for (int i = random_.Between(1, kMostVarbinds); i > 0; --i) {
    ranges.push_back(Range());
  }
  return ranges;
}

agentx::Value RandomRequests::Value() {
  switch (random_.Below(6)) {
    case 0:
    case 1:
      return {agentx::Type::kInteger, random_.Between(-3, 3)};
    case 2:
      return {agentx::Type::kGauge32, random_.Below(1000)};
    case 3:
      return {agentx::Type::kCounter64, std::uint64_t{random_.Below(1000)}};
    default:
      // No longer than the buffer of a text.
      return {agentx::Type::kOctetString,
              std::string(random_.OneOf({0, 1, 4, 6, 8, 40, 60}), 'w')};
  }
}
