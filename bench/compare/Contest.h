// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_
#define SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_

#include <chrono>
#include <vector>

#include "compare/Subject.h"
#include "compare/Workload.h"

// Sends the same requests to several subjects, which run alternately in short
// slices, so that other load of the machine affects all of them.
//
// Slices are equally long in time, so that the caches are equally cold for all;
// a fast subject gets further in the sequence of requests than a slow one.
class Contest {
 public:
  // The CPU time per request of one subject, in microseconds, round by round.
  using Costs = std::vector<double>;

  // The subjects are borrowed.
  Contest(std::vector<Subject*> subjects, Workload workload);

  // Runs rounds, of a slice for each subject, for about `budget`, and at least
  // five. Returns the costs of each subject. Throws std::runtime_error when a
  // response differs from the first subject's to the same request.
  std::vector<Costs> Run(std::chrono::milliseconds budget);

 private:
  struct Slice {
    double cost;  // microseconds per request
    std::vector<testkit::agentx::Response> answers;
  };

  // How many requests take the time of a slice.
  unsigned int LengthFor(Subject& subject);

  Slice RunSlice(std::size_t subject);
  std::vector<Slice> RunRound(std::size_t first);
  void RequireSameAnswers(const std::vector<Slice>& round) const;

  std::vector<Subject*> subjects_;
  Workload workload_;
  std::vector<unsigned int> lengths_;  // of the slices
  unsigned int step_ = 0;              // at which the current round began
};

// Throws std::runtime_error, with request and responses, unless both responses
// are equal.
void RequireSameAnswer(const testkit::agentx::Body& request, const Subject& a,
                       const testkit::agentx::Response& answerOfA,
                       const Subject& b,
                       const testkit::agentx::Response& answerOfB);

#endif  // SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_
