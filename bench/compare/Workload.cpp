// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Workload.h"

#include "objects/objects.h"

namespace agentx = testkit::agentx;

namespace {

using testkit::agentx::Oid;
using testkit::agentx::SearchRange;

// The number of the object, from 1 to `count`, that a step addresses. The prime
// stride visits all of them in a scattered order, as it divides none of the
// counts.
unsigned int Pick(unsigned int step, unsigned int count) {
  return 1 + static_cast<unsigned int>(step * 7919ULL % count);
}

// The subtree below one arc of the root: a master agent limits a GETNEXT to the
// registered region.
SearchRange From(Oid start, std::uint32_t arc) {
  return {std::move(start), false, {BENCH_ROOT, arc + 1}};
}

std::vector<SearchRange> FiveCells(unsigned int row) {
  std::vector<SearchRange> cells;
  for (unsigned int column = BENCH_FIRST_COLUMN;
       column < BENCH_FIRST_COLUMN + 5; ++column) {
    cells.push_back(From(CellOid(column, row), BENCH_TABLE));
  }
  return cells;
}

}  // namespace

Oid ScalarOid(unsigned int k) { return {BENCH_ROOT, BENCH_SCALARS, k, 0}; }

Oid CellOid(unsigned int column, unsigned int row) {
  return {BENCH_ROOT, BENCH_TABLE, 1, column, row};
}

Oid NotifiedOid() { return {BENCH_ROOT, BENCH_TRAPS, 1, 0}; }

Workload GetScalar(unsigned int count) {
  return [=](unsigned int step) {
    return agentx::Get{{From(ScalarOid(Pick(step, count)), BENCH_SCALARS)}};
  };
}

Workload GetNextScalar(unsigned int count) {
  return [=](unsigned int step) {
    // Never from the last one, which has no successor.
    return agentx::GetNext{
        {From(ScalarOid(Pick(step, count - 1)), BENCH_SCALARS)}};
  };
}

Workload SetScalar(unsigned int count) {
  return [=](unsigned int step) {
    const unsigned int k = BENCH_TYPES * Pick(step, count / BENCH_TYPES);
    const auto value = static_cast<std::int32_t>(step);
    return agentx::TestSet{{{ScalarOid(k), {agentx::Type::kInteger, value}}}};
  };
}

Workload GetNextCell(unsigned int rows) {
  return [=](unsigned int step) {
    const unsigned int column = BENCH_FIRST_COLUMN + step % BENCH_TYPES;
    return agentx::GetNext{
        {From(CellOid(column, Pick(step, rows)), BENCH_TABLE)}};
  };
}

Workload GetFiveColumns(unsigned int rows) {
  return [=](unsigned int step) {
    return agentx::Get{FiveCells(Pick(step, rows))};
  };
}

Workload GetNextFiveColumns(unsigned int rows) {
  return [=](unsigned int step) {
    return agentx::GetNext{FiveCells(Pick(step, rows))};
  };
}

Workload SendNotifications(int count) {
  return [=](unsigned int) {
    return agentx::TestSet{{{{BENCH_ROOT, BENCH_TRAPS, 2, 0},
                             {agentx::Type::kInteger, std::int32_t{count}}}}};
  };
}
