// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAILINGNEW_H_
#define SNMPSUBAGENT_TESTS_FAILINGNEW_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

#include "support/Threads.h"

// This program has its own operator new, which fails on demand.

// How many objects from operator new exist.
long LivingAllocations();

enum class Failing { ThisThread, AllThreads };

// Makes one allocation fail: the `number`-th of those made while this object
// lives; none if it is 0.
class AllocationFailure {
 public:
  explicit AllocationFailure(int number, Failing who = Failing::ThisThread);
  ~AllocationFailure();
  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;

  // Whether there were so many.
  bool Happened() const;
};

// While it lives, this thread's allocations are not among those of all threads.
class SparedThread {
 public:
  SparedThread();
  ~SparedThread();
  SparedThread(const SparedThread&) = delete;
  SparedThread& operator=(const SparedThread&) = delete;
};

// Calls `test` with a function that carries out an action in which an
// allocation fails, and that returns whether the action came to its end; for
// each of the action's allocations in turn. What `test` makes it has to
// destroy.
template <typename Test>
void WithEachAllocationFailing(const Test& test,
                               Failing who = Failing::ThisThread) {
  // The first time nothing fails: what is made once and kept is made here.
  bool happened = true;
  for (int number = 0; happened; ++number) {
    const std::size_t threads = support::ThreadCount();
    const long before = LivingAllocations();
    test([&](const auto& action) {
      const AllocationFailure failure(number, who);
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
    // One that looks up a name ends by itself, after its result is there.
    EXPECT_TRUE(support::WaitForThreadCount(threads));
    if (number > 0) {
      EXPECT_EQ(LivingAllocations(), before)
          << "left after the failure of allocation " << number;
    }
  }
}

#endif  // SNMPSUBAGENT_TESTS_FAILINGNEW_H_
