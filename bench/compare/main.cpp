// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Compares subagents on the library with subagents on the agent library alone.
//
//   bench_compare [--quick] DIRECTORY [EXPERIMENT...]
//
// Prints a table and writes it, with the curves for the plots, to DIRECTORY. A
// response of the library that differs from a peer's ends it with status 1.
// Without the name of an experiment it runs all of them.
#include <sched.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "compare/Experiments.h"
#include "compare/Machine.h"

namespace {

using Experiment = std::pair<std::string, void (*)(Setup&)>;

const std::vector<Experiment> kExperiments{
    {"scalars", MeasureScalars},
    {"tables", MeasureTables},
    {"notifications", MeasureNotifications},
    {"objects", MeasureObjects},
    {"snmpd", MeasureBehindSnmpd},
    {"latency", MeasureLatency},
    {"memory", MeasureMemory},
    {"start", MeasureStart},
    {"instructions", MeasureInstructions}};

// Pins this process, and those that it starts, to one processor: on an idle
// machine, waking a process on another one costs more than most requests, and
// chance would decide which side pays for it.
void StayOnOneProcessor() {
  const int processor = sched_getcpu();
  if (processor < 0) return;
  cpu_set_t processors;
  CPU_ZERO(&processors);
  CPU_SET(processor, &processors);
  sched_setaffinity(0, sizeof processors, &processors);
}

int Usage() {
  std::fprintf(stderr,
               "usage: bench_compare [--quick] DIRECTORY [EXPERIMENT...]\n"
               "experiments:");
  for (const Experiment& experiment : kExperiments) {
    std::fprintf(stderr, " %s", experiment.first.c_str());
  }
  std::fprintf(stderr, "\n");
  return 2;
}

bool IsWanted(const std::string& name, const std::vector<std::string>& wanted) {
  if (wanted.empty()) return true;
  for (const std::string& word : wanted) {
    if (word == name) return true;
  }
  return false;
}

int Run(bool quick, const std::string& directory,
        const std::vector<std::string>& wanted) {
  StayOnOneProcessor();
  std::printf("%s\n", MachineText().c_str());
  Report report;
  Setup setup{quick, report};
  int status = 0;
  try {
    for (const auto& [name, measure] : kExperiments) {
      if (IsWanted(name, wanted)) measure(setup);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_compare: %s\n", failure.what());
    status = 1;
  }
  report.Save(directory);
  std::ofstream(directory + "/machine.txt") << MachineText();
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  const bool quick = !words.empty() && words.front() == "--quick";
  if (quick) words.erase(words.begin());
  if (words.empty()) return Usage();
  const std::string directory = words.front();
  words.erase(words.begin());
  for (const std::string& word : words) {
    bool known = false;
    for (const Experiment& experiment : kExperiments) {
      known = known || experiment.first == word;
    }
    if (!known) return Usage();
  }
  return Run(quick, directory, words);
}
