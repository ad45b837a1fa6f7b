// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_LOOPSOFTHREAD_H_
#define SNMPSUBAGENT_TESTING_LOOPSOFTHREAD_H_

#include <vector>

#include "snmpsubagent/testing/Loop.h"

namespace snmpsubagent::testing::internal {

// The loops of the calling thread.
class LoopsOfThread {
 public:
  static LoopsOfThread& Here();

  void Add(Loop& loop) { loops_.push_back(&loop); }
  void Remove(const Loop& loop);
  bool IsEmpty() const { return loops_.empty(); }

  // Lets each serve what there is. Does nothing within a function that a loop
  // has called.
  void Run();

 private:
  std::vector<Loop*> loops_;
  bool running_ = false;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_LOOPSOFTHREAD_H_
