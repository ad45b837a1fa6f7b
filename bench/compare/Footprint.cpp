// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <memory>

#include "compare/Experiments.h"
#include "compare/Subject.h"
#include "compare/Workload.h"
#include "master/DirectMaster.h"

namespace {

constexpr unsigned int kFew = 100;

double MemoryOf(const Publisher& publisher, unsigned int count) {
  return Subject(publisher, count, std::make_unique<TcpMaster>())
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
    Subject subject(publisher_, scalars, std::make_unique<TcpMaster>());
    // Its response shows that the last registration has been processed.
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

// Compares what one more object takes.
void Compare(Setup& setup, const std::string& name, const Publisher& library,
             const Publisher& peer, unsigned int more, double goal) {
  Figure figure{name, "bytes", peer.Name(), {}, {}, goal};
  for (int run = 0; run < setup.Choose(1, 3); ++run) {
    figure.library.push_back(MemoryPerObject(library, more));
    figure.ofPeer.push_back(MemoryPerObject(peer, more));
  }
  setup.report.Add(figure);
}

void CompareResidentMemory(Setup& setup, const std::string& name, Base base,
                           double goal) {
  const auto measured = [](Base of) {
    return Subject({of, "scalars"}, kFew, std::make_unique<TcpMaster>())
        .ResidentMemory();
  };
  setup.report.Add({name,
                    "bytes",
                    Publisher{Base::kAgentLibrary, "scalars"}.Name(),
                    {measured(base)},
                    {measured(Base::kAgentLibrary)},
                    goal});
}

}  // namespace

void MeasureMemory(Setup& setup) {
  CompareResidentMemory(setup, "resident memory with 100 scalars",
                        Base::kNodeClasses, 1.2);
  CompareResidentMemory(setup, "objects: resident memory with 100 scalars",
                        Base::kObjects, 0.45);
  Compare(setup, "memory per scalar", {Base::kNodeClasses, "scalars"},
          {Base::kAgentLibrary, "scalars"}, 5000, 1.15);
  Compare(setup, "objects: memory per scalar", {Base::kObjects, "scalars"},
          {Base::kAgentLibrary, "scalars"}, 5000, 0.15);
  Compare(setup, "objects: memory per row of six values",
          {Base::kObjects, "table"}, {Base::kAgentLibrary, "container"}, 20000,
          1.5);
  for (const char* const kind : {"iterator", "container", "tdata", "dataset"}) {
    Compare(setup, "memory per row of six values",
            {Base::kNodeClasses, "table"}, {Base::kAgentLibrary, kind}, 20000,
            4.0);
  }
}

void MeasureStart(Setup& setup) {
  const Publisher inC{Base::kAgentLibrary, "scalars"};
  for (const unsigned int scalars : {100U, 5000U}) {
    Starts objects({Base::kObjects, "scalars"});
    Starts peer(inC);
    for (int run = 0; run < setup.Choose(3, 9); ++run) {
      objects.AddSample(scalars);
      peer.AddSample(scalars);
    }
    setup.report.Add({"objects: from start to " + std::to_string(scalars) +
                          " registered scalars",
                      "us", inC.Name(), objects.whole, peer.whole,
                      scalars == 100 ? 0.4 : 0.02});
  }
  Starts library({Base::kNodeClasses, "scalars"});
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
