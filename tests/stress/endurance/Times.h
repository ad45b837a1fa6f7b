// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_TIMES_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_TIMES_H_

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

// Times in milliseconds.
class Times {
 public:
  void Reserve(std::size_t count) { times_.reserve(count); }

  void Add(std::chrono::steady_clock::duration time) {
    times_.push_back(std::chrono::duration<double, std::milli>(time).count());
  }

  static void PrintHead() {
    std::printf("%-28s%9s%9s%9s%9s%9s\n", "", "least", "median", "90 %", "99 %",
                "most");
  }

  // A line of a table. Requires: there are some.
  void Print(const char* what) {
    std::sort(times_.begin(), times_.end());
    std::printf("%-28s%9.1f%9.1f%9.1f%9.1f%9.1f\n", what, times_.front(),
                At(0.5), At(0.9), At(0.99), times_.back());
  }

 private:
  double At(double share) const {
    return times_[static_cast<std::size_t>(
        share * static_cast<double>(times_.size() - 1))];
  }

  std::vector<double> times_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_TIMES_H_
