// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <memory>

#include "compare/Experiments.h"
#include "compare/Subject.h"
#include "compare/Workload.h"
#include "master/DirectMaster.h"

namespace {

constexpr unsigned int kFew = 100;

double MemoryOf(const Publisher& publisher, unsigned int count) {
  return Subject(publisher, count, std::make_unique<DirectMaster>())
      .AnonymousMemory();
}

// What one more scalar or row takes.
double MemoryPerObject(const Publisher& publisher, unsigned int more) {
  return (MemoryOf(publisher, kFew + more) - MemoryOf(publisher, kFew)) / more;
}

// Samples of the CPU time from the start of a subagent until its scalars are
// registered.
struct Starts {
  explicit Starts(const Publisher& publisher) : publisher_(publisher) {}

  void AddSample(unsigned int scalars) {
    Subject subject(publisher_, scalars, std::make_unique<DirectMaster>());
    // Its answer tells that the last registration is done with.
    subject.Put(GetScalar(scalars)(0));
    const Subject::CpuTime used = subject.Used();
    whole.push_back(used.count());
    loaded.push_back((used - subject.UsedForLoading()).count());
  }

  std::vector<double> whole;
  std::vector<double> loaded;  // without loading the program

 private:
  Publisher publisher_;
};

}  // namespace

void MeasureMemory(Setup& setup) {
  const Publisher scalars{true, "scalars"};
  const Publisher scalarsInC{false, "scalars"};
  const Publisher table{true, "table"};
  const Publisher tableInC{false, "iterator"};
  Figure perScalar{
      "memory per scalar", "bytes", scalarsInC.Name(), {}, {}, 1.15};
  Figure perRow{
      "memory per row of six values", "bytes", tableInC.Name(), {}, {}, 4.0};
  for (int run = 0; run < setup.Choose(1, 3); ++run) {
    perScalar.library.push_back(MemoryPerObject(scalars, 5000));
    perScalar.ofPeer.push_back(MemoryPerObject(scalarsInC, 5000));
    perRow.library.push_back(MemoryPerObject(table, 20000));
    perRow.ofPeer.push_back(MemoryPerObject(tableInC, 20000));
  }
  setup.report.Add(perScalar);
  setup.report.Add(perRow);
}

void MeasureStart(Setup& setup) {
  const Publisher inC{false, "scalars"};
  Starts library({true, "scalars"});
  Starts peer(inC);
  for (int run = 0; run < setup.Choose(9, 41); ++run) {
    library.AddSample(100);
    peer.AddSample(100);
  }
  setup.report.Add({"from start to 100 registered scalars", "us", inC.Name(),
                    library.whole, peer.whole, 1.05});
  setup.report.Add({"the same, once the program is loaded", "us", inC.Name(),
                    library.loaded, peer.loaded, 1.05});
}
