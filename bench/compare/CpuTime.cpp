// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Experiments.h"
#include "compare/Pair.h"
#include "compare/Statistics.h"
#include "master/DirectMaster.h"
#include "master/SnmpdMaster.h"

namespace {

const Publisher kScalars{Base::kNodeClasses, "scalars"};
const Publisher kScalarsInC{Base::kAgentLibrary, "scalars"};
const Publisher kTable{Base::kNodeClasses, "table"};
const Publisher kIteratorInC{Base::kAgentLibrary, "iterator"};
const Publisher kContainerInC{Base::kAgentLibrary, "container"};

std::optional<double> GoalOfGet(unsigned int scalars) {
  switch (scalars) {
    case 100:
      return 1.00;
    case 5000:
      return 0.35;
    default:
      return {};
  }
}

void MeasureGet(Setup& setup, unsigned int scalars) {
  Pair<TcpMaster> pair(kScalars, kScalarsInC, scalars);
  const Figure figure = pair.Compete(
      "GET of a scalar, " + std::to_string(scalars) + " registered",
      GetScalar(scalars), Budget(setup), GoalOfGet(scalars));
  setup.report.Add(figure);
  setup.report.AddPoint("get", "library", scalars, Median(figure.library));
  setup.report.AddPoint("get", figure.peer, scalars, Median(figure.ofPeer));
}

void MeasureSet(Setup& setup) {
  Pair<TcpMaster> pair(kScalars, kScalarsInC, 100);
  setup.report.Add(
      pair.Compete("SET of a scalar", SetScalar(100), Budget(setup), 1.05));
  pair.Compare(SetScalar(100));
  pair.Compare(GetScalar(100));
}

// Returns the library's cost.
double MeasureGetNext(Setup& setup, unsigned int rows, const Publisher& peer,
                      std::optional<double> goal) {
  Pair<TcpMaster> pair(kTable, peer, rows);
  const Figure figure =
      pair.Compete("GETNEXT in a table of " + std::to_string(rows) + " rows",
                   GetNextCell(rows), Budget(setup), goal);
  setup.report.Add(figure);
  setup.report.AddPoint("getnext", figure.peer, rows, Median(figure.ofPeer));
  return Median(figure.library);
}

std::optional<double> GoalBesideIterator(unsigned int rows) {
  switch (rows) {
    case 100:
      return 0.9;
    case 1000:
      return 0.25;
    case 5000:
      return 0.10;
    default:
      return {};
  }
}

std::optional<double> GoalBesideContainer(unsigned int rows) {
  return rows == 1000 ? std::optional<double>(1.10) : std::nullopt;
}

void MeasureGrowth(Setup& setup) {
  std::vector<unsigned int> counts{100, 1000, 5000, 20000};
  if (!setup.quick) counts = {100, 300, 1000, 3000, 5000, 10000, 20000};
  std::vector<double> rows;
  std::vector<double> costs;
  for (const unsigned int count : counts) {
    const double cost =
        MeasureGetNext(setup, count, kContainerInC, GoalBesideContainer(count));
    setup.report.AddPoint("getnext", "library", count, cost);
    rows.push_back(count);
    costs.push_back(cost);
  }
  setup.report.Add("exponent of growth, 100 to 20,000 rows", "",
                   GrowthExponent(rows, costs), 0.2);
  for (const unsigned int count : counts) {
    MeasureGetNext(setup, count, kIteratorInC, GoalBesideIterator(count));
  }
}

void MeasureFiveColumns(Setup& setup) {
  Pair<TcpMaster> pair(kTable, kIteratorInC, 1000);
  setup.report.Add(pair.Compete("GETNEXT of five columns of 1,000 rows",
                                GetNextFiveColumns(1000), Budget(setup), 0.15));
  setup.report.Add(pair.Compete("GET of five columns of 1,000 rows",
                                GetFiveColumns(1000), Budget(setup), 0.15));
}

}  // namespace

void MeasureScalars(Setup& setup) {
  std::vector<unsigned int> counts{100, 1000, 5000};
  if (!setup.quick) counts = {10, 100, 300, 1000, 3000, 5000};
  for (const unsigned int count : counts) MeasureGet(setup, count);
  MeasureSet(setup);
}

void MeasureTables(Setup& setup) {
  MeasureGrowth(setup);
  for (const char* const kind : {"sorted", "tdata", "dataset"}) {
    for (const unsigned int rows : {100U, 1000U, 5000U}) {
      MeasureGetNext(setup, rows, {Base::kAgentLibrary, kind}, {});
    }
  }
  MeasureFiveColumns(setup);
}

void MeasureNotifications(Setup& setup) {
  constexpr int kEach = 100;
  Pair<TcpMaster> pair({Base::kNodeClasses, "traps"},
                       {Base::kAgentLibrary, "traps"}, 1);
  setup.report.Add(pair.Compete("notification", SendNotifications(kEach),
                                Budget(setup), 1.00, kEach));
}

// SETs are only compared: snmpd responds to them before the subagent has
// written.
void MeasureBehindSnmpd(Setup& setup) {
  {
    Pair<SnmpdMaster> pair(kScalars, kScalarsInC, 100);
    setup.report.Add(pair.Compete("GET of a scalar, 100 registered, snmpd",
                                  GetScalar(100), Budget(setup), {}));
    pair.Compare(SetScalar(100));
    pair.Compare(GetScalar(100));
  }
  for (const Publisher& peer : {kIteratorInC, kContainerInC}) {
    Pair<SnmpdMaster> pair(kTable, peer, 1000);
    setup.report.Add(pair.Compete("GETNEXT in a table of 1,000 rows, snmpd",
                                  GetNextCell(1000), Budget(setup), {}));
    setup.report.Add(pair.Compete("GETNEXT of five columns, snmpd",
                                  GetNextFiveColumns(1000), Budget(setup), {}));
  }
}
