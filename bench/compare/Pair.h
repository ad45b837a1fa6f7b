// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_PAIR_H_
#define SNMPSUBAGENT_BENCH_COMPARE_PAIR_H_

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "compare/Contest.h"
#include "compare/Experiments.h"
#include "compare/Subject.h"
#include "compare/Workload.h"

// How long a contest takes.
inline std::chrono::milliseconds Budget(const Setup& setup) {
  return std::chrono::seconds(setup.Choose(1, 4));
}

// The library and a peer, alive at once, each behind a master of its own.
template <typename MasterType>
class Pair {
 public:
  Pair(const Publisher& library, const Publisher& peer, unsigned int count)
      : library_(library, count, std::make_unique<MasterType>()),
        peer_(peer, count, std::make_unique<MasterType>()) {}

  // The costs of both, as a figure: per request, or per item if each request
  // has several.
  Figure Compete(const std::string& name, const Workload& workload,
                 std::chrono::milliseconds budget, std::optional<double> goal,
                 int items = 1) {
    auto costs = Contest({&library_, &peer_}, workload).Run(budget);
    for (Contest::Costs& ofOne : costs) {
      for (double& cost : ofOne) cost /= items;
    }
    return {name, "us", peer_.Name(), costs[0], costs[1], goal};
  }

  // Sends the same 100 requests to both; throws std::runtime_error when two
  // responses differ.
  void Compare(const Workload& workload) {
    for (unsigned int step = 0; step < 100; ++step) {
      const testkit::agentx::Body request = workload(step);
      RequireSameAnswer(request, library_, library_.Put(request), peer_,
                        peer_.Put(request));
    }
  }

 private:
  Subject library_;
  Subject peer_;
};

#endif  // SNMPSUBAGENT_BENCH_COMPARE_PAIR_H_
