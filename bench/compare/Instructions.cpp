// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "compare/Contest.h"
#include "compare/Experiments.h"
#include "master/DirectMaster.h"
#include "testkit/ScratchDirectory.h"

namespace {

constexpr unsigned int kWarmUp = 20;

double TotalIn(const std::string& profile) {
  std::ifstream lines(profile);
  for (std::string word; lines >> word;) {
    double total = 0;
    if (word == "totals:" && lines >> total) return total;
  }
  throw std::runtime_error("callgrind has left no profile");
}

// All instructions of a subagent, from start to end.
double Count(const Publisher& publisher, unsigned int count,
             const Workload& workload, unsigned int requests) {
  const testkit::ScratchDirectory directory;
  const std::string profile = directory.Path() / "profile";
  Subject subject(
      publisher, count, std::make_unique<TcpMaster>(),
      {"valgrind", "--tool=callgrind", "--callgrind-out-file=" + profile});
  for (unsigned int step = 0; step < requests; ++step) {
    subject.Put(workload(step));
  }
  subject.End();
  return TotalIn(profile);
}

// The instructions of the requests: without those of start and end.
double PerRequest(const Setup& setup, const Publisher& publisher,
                  unsigned int count, const Workload& workload) {
  const unsigned int requests = setup.Choose(100U, 400U);
  const double base = Count(publisher, count, workload, kWarmUp);
  const double whole = Count(publisher, count, workload, kWarmUp + requests);
  return (whole - base) / requests;
}

void Measure(Setup& setup, const std::string& name, const Publisher& library,
             const Publisher& peer, unsigned int count,
             const Workload& workload, std::optional<double> goal) {
  setup.report.Add({name,
                    "instr",
                    peer.Name(),
                    {PerRequest(setup, library, count, workload)},
                    {PerRequest(setup, peer, count, workload)},
                    goal});
}

}  // namespace

void MeasureInstructions(Setup& setup) {
  const Publisher scalars{Base::kNodeClasses, "scalars"};
  const Publisher scalarsInC{Base::kAgentLibrary, "scalars"};
  Measure(setup, "GET of a scalar, 100 registered", scalars, scalarsInC, 100,
          GetScalar(100), 1.00);
  Measure(setup, "SET of a scalar", scalars, scalarsInC, 100, SetScalar(100),
          {});
  Measure(setup, "GETNEXT in a table of 1,000 rows",
          {Base::kNodeClasses, "table"}, {Base::kAgentLibrary, "iterator"},
          1000, GetNextCell(1000), {});
  Measure(setup, "GETNEXT in a table of 1,000 rows",
          {Base::kNodeClasses, "table"}, {Base::kAgentLibrary, "container"},
          1000, GetNextCell(1000), {});
  const Publisher objects{Base::kObjects, "scalars"};
  Measure(setup, "objects: GET of a scalar, 100 in a module", objects,
          scalarsInC, 100, GetScalar(100), 0.35);
  Measure(setup, "objects: SET of a scalar", objects, scalarsInC, 100,
          SetScalar(100), 0.35);
  Measure(setup, "objects: GETNEXT in a table of 1,000 rows",
          {Base::kObjects, "table"}, {Base::kAgentLibrary, "container"}, 1000,
          GetNextCell(1000), 0.35);
  if (!setup.quick) {
    Measure(setup, "GET of a scalar, 5,000 registered", scalars, scalarsInC,
            5000, GetScalar(5000), 0.35);
    Measure(setup, "objects: GET of a scalar, 5,000 in a module", objects,
            scalarsInC, 5000, GetScalar(5000), 0.02);
  }
}
