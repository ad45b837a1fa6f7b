// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_
#define SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_

#include <chrono>
#include <vector>

#include "compare/Subject.h"
#include "compare/Workload.h"

// The same requests put to several subjects, all alive at once, which take
// turns in short slices: whatever else the machine does meets all of them
// alike.
//
// Slices are as long in time, so that none suffers more than another from what
// the others leave behind in the caches; a fast subject gets further in the
// sequence of requests than a slow one.
class Contest {
 public:
  // The CPU time per request of one subject, in microseconds, round by round.
  using Costs = std::vector<double>;

  // The subjects are borrowed.
  Contest(std::vector<Subject*> subjects, Workload workload);

  // Runs rounds, of a slice for each subject, for about `budget`, and at least
  // five. Returns the costs of each subject. Throws std::runtime_error when an
  // answer differs from what the first subject answers to the same request.
  std::vector<Costs> Run(std::chrono::milliseconds budget);

 private:
  struct Slice {
    double cost;  // microseconds per request
    std::vector<testkit::agentx::Response> answers;
  };

  // How many requests keep the subject busy for the time of a slice.
  unsigned int LengthFor(Subject& subject);

  Slice RunSlice(std::size_t subject);
  std::vector<Slice> RunRound(std::size_t first);
  void RequireSameAnswers(const std::vector<Slice>& round) const;

  std::vector<Subject*> subjects_;
  Workload workload_;
  std::vector<unsigned int> lengths_;  // of the slices
  unsigned int step_ = 0;              // at which the current round began
};

// Throws std::runtime_error, with request and answers, unless both are the
// same.
void RequireSameAnswer(const testkit::agentx::Body& request, const Subject& a,
                       const testkit::agentx::Response& answerOfA,
                       const Subject& b,
                       const testkit::agentx::Response& answerOfB);

#endif  // SNMPSUBAGENT_BENCH_COMPARE_CONTEST_H_
