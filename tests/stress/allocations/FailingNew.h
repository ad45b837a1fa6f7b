// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAILINGNEW_H_
#define SNMPSUBAGENT_TESTS_FAILINGNEW_H_

#include <gtest/gtest.h>

#include <new>

// This program has its own operator new, which fails on demand.

// How many objects from operator new exist.
long LivingAllocations();

// Makes one allocation of this thread fail: the `number`-th of those made while
// this object lives; none if it is 0.
class AllocationFailure {
 public:
  explicit AllocationFailure(int number);
  ~AllocationFailure();
  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;

  // Whether there were so many.
  bool Happened() const;
};

// Calls `test` with a function that carries out an action in which an
// allocation fails, and that returns whether the action came to its end; for
// each of the action's allocations in turn. What `test` makes it has to
// destroy.
template <typename Test>
void WithEachAllocationFailing(const Test& test) {
  // The first time nothing fails: what is made once and kept is made here.
  bool happened = true;
  for (int number = 0; happened; ++number) {
    const long before = LivingAllocations();
    test([&](const auto& action) {
      const AllocationFailure failure(number);
      bool completed = false;
      try {
        action();
        completed = true;
      } catch (const std::bad_alloc&) {
        // As promised.
      }
      happened = number == 0 || failure.Happened();
      return completed;
    });
    if (number > 0) {
      EXPECT_EQ(LivingAllocations(), before)
          << "left after the failure of allocation " << number;
    }
  }
}

#endif  // SNMPSUBAGENT_TESTS_FAILINGNEW_H_
