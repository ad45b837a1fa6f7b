// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Experiments.h"
#include "compare/Pair.h"
#include "compare/Statistics.h"
#include "master/DirectMaster.h"

namespace {

// Over the Unix socket by which a service connects if it is not told
// otherwise; some of it over TCP as well, as the node classes do.

const Publisher kScalars{Base::kObjects, "scalars"};
const Publisher kScalarsInC{Base::kAgentLibrary, "scalars"};
const Publisher kBareLoop{Base::kSystemAlone, "scalars"};
const Publisher kTable{Base::kObjects, "table"};
const Publisher kContainerInC{Base::kAgentLibrary, "container"};

std::optional<double> GoalOfGet(unsigned int scalars) {
  switch (scalars) {
    case 100:
      return 0.35;
    case 5000:
      return 0.02;
    default:
      return {};
  }
}

Figure CompeteInGet(Setup& setup, unsigned int scalars, const Publisher& peer,
                    std::optional<double> goal) {
  return Pair<UnixMaster>(kScalars, peer, scalars)
      .Compete("objects: GET of a scalar, " + std::to_string(scalars) +
                   " in a module",
               GetScalar(scalars), Budget(setup), goal);
}

void MeasureGet(Setup& setup) {
  std::vector<unsigned int> counts{100, 1000, 5000};
  if (!setup.quick) counts = {100, 300, 1000, 3000, 5000};
  for (const unsigned int count : counts) {
    const Figure figure =
        CompeteInGet(setup, count, kScalarsInC, GoalOfGet(count));
    setup.report.Add(figure);
    setup.report.AddPoint("objects-get", "objects", count,
                          Median(figure.library));
    setup.report.AddPoint("objects-get", figure.peer, count,
                          Median(figure.ofPeer));
  }
  setup.report.Add(CompeteInGet(setup, 100, kBareLoop, {}));
}

void MeasureGetOverTcp(Setup& setup) {
  for (const Publisher& peer : {kScalarsInC, kBareLoop}) {
    setup.report.Add(
        Pair<TcpMaster>(kScalars, peer, 100)
            .Compete("objects: GET of a scalar, 100 in a module, over TCP",
                     GetScalar(100), Budget(setup), {}));
  }
}

void MeasureSet(Setup& setup) {
  Pair<UnixMaster> pair(kScalars, kScalarsInC, 100);
  setup.report.Add(pair.Compete("objects: SET of a scalar", SetScalar(100),
                                Budget(setup), 0.35));
  pair.Compare(SetScalar(100));
  pair.Compare(GetScalar(100));
}

// Returns the objects' cost.
double MeasureGetNext(Setup& setup, unsigned int rows) {
  Pair<UnixMaster> pair(kTable, kContainerInC, rows);
  const Figure figure = pair.Compete(
      "objects: GETNEXT in a table of " + std::to_string(rows) + " rows",
      GetNextCell(rows), Budget(setup), rows < 100000 ? 0.35 : 0.40);
  setup.report.Add(figure);
  setup.report.AddPoint("objects-getnext", "objects", rows,
                        Median(figure.library));
  setup.report.AddPoint("objects-getnext", figure.peer, rows,
                        Median(figure.ofPeer));
  return Median(figure.library);
}

void MeasureGrowth(Setup& setup) {
  std::vector<unsigned int> counts{100, 1000, 100000};
  if (!setup.quick) counts = {100, 1000, 10000, 100000, 1000000};
  std::vector<double> rows;
  std::vector<double> costs;
  for (const unsigned int count : counts) {
    rows.push_back(count);
    costs.push_back(MeasureGetNext(setup, count));
  }
  setup.report.Add("objects: exponent of growth", "",
                   GrowthExponent(rows, costs), 0.1);
}

void MeasureFiveColumns(Setup& setup) {
  Pair<UnixMaster> pair(kTable, kContainerInC, 1000);
  setup.report.Add(
      pair.Compete("objects: GETNEXT of five columns of 1,000 rows",
                   GetNextFiveColumns(1000), Budget(setup), 0.30));
  setup.report.Add(pair.Compete("objects: GET of five columns of 1,000 rows",
                                GetFiveColumns(1000), Budget(setup), 0.30));
}

void MeasureNotification(Setup& setup) {
  constexpr int kEach = 100;
  Pair<UnixMaster> pair({Base::kObjects, "traps"},
                        {Base::kAgentLibrary, "traps"}, 1);
  setup.report.Add(pair.Compete("objects: notification",
                                SendNotifications(kEach), Budget(setup), 0.35,
                                kEach));
}

}  // namespace

void MeasureObjects(Setup& setup) {
  MeasureGet(setup);
  MeasureGetOverTcp(setup);
  MeasureSet(setup);
  MeasureGrowth(setup);
  MeasureFiveColumns(setup);
  MeasureNotification(setup);
}
