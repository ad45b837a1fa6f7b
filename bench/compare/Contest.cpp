// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Contest.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "testkit/agentx/Text.h"

namespace agentx = testkit::agentx;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kSlice{10};
constexpr unsigned int kLongest = 500;
constexpr unsigned int kWarmUp = 3;
constexpr int kFewestRounds = 5;

}  // namespace

Contest::Contest(std::vector<Subject*> subjects, Workload workload)
    : subjects_(std::move(subjects)), workload_(std::move(workload)) {
  for (Subject* subject : subjects_) lengths_.push_back(LengthFor(*subject));
}

std::vector<Contest::Costs> Contest::Run(std::chrono::milliseconds budget) {
  std::vector<Costs> costs(subjects_.size());
  const Clock::time_point end = Clock::now() + budget;
  for (int round = 0; round < kFewestRounds || Clock::now() < end; ++round) {
    const std::vector<Slice> slices =
        RunRound(static_cast<std::size_t>(round) % subjects_.size());
    for (std::size_t i = 0; i < slices.size(); ++i) {
      costs[i].push_back(slices[i].cost);
    }
  }
  return costs;
}

unsigned int Contest::LengthFor(Subject& subject) {
  for (unsigned int step = 0; step < kWarmUp; ++step) {
    subject.Put(workload_(step));
  }
  const Clock::time_point start = Clock::now();
  unsigned int step = 0;
  while (step < kLongest && Clock::now() - start < kSlice) {
    subject.Put(workload_(step++));
  }
  return step;
}

Contest::Slice Contest::RunSlice(std::size_t subject) {
  Slice slice{0, {}};
  const Subject::CpuTime before = subjects_[subject]->Used();
  for (unsigned int i = 0; i < lengths_[subject]; ++i) {
    slice.answers.push_back(subjects_[subject]->Put(workload_(step_ + i)));
  }
  slice.cost =
      (subjects_[subject]->Used() - before).count() / lengths_[subject];
  return slice;
}

std::vector<Contest::Slice> Contest::RunRound(std::size_t first) {
  std::vector<Slice> round(subjects_.size());
  for (std::size_t i = 0; i < subjects_.size(); ++i) {
    const std::size_t turn = (first + i) % subjects_.size();
    round[turn] = RunSlice(turn);
  }
  RequireSameAnswers(round);
  step_ += *std::max_element(lengths_.begin(), lengths_.end());
  return round;
}

void Contest::RequireSameAnswers(const std::vector<Slice>& round) const {
  for (std::size_t i = 1; i < round.size(); ++i) {
    const std::size_t both =
        std::min(round[0].answers.size(), round[i].answers.size());
    for (std::size_t k = 0; k < both; ++k) {
      RequireSameAnswer(workload_(step_ + static_cast<unsigned int>(k)),
                        *subjects_[0], round[0].answers[k], *subjects_[i],
                        round[i].answers[k]);
    }
  }
}

void RequireSameAnswer(const agentx::Body& request, const Subject& a,
                       const agentx::Response& answerOfA, const Subject& b,
                       const agentx::Response& answerOfB) {
  if (answerOfA.error == answerOfB.error &&
      answerOfA.index == answerOfB.index &&
      answerOfA.varbinds == answerOfB.varbinds) {
    return;
  }
  throw std::runtime_error("answers differ\n" + Text(request) + "\n" +
                           a.Name() + ": " + agentx::Text(answerOfA) + "\n" +
                           b.Name() + ": " + agentx::Text(answerOfB));
}
