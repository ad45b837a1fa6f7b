// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_COUNTEDVALUE_H_
#define SNMPSUBAGENT_TESTS_COUNTEDVALUE_H_

#include <limits>
#include <new>

#include "NetSNMPIntNodeData.h"

// A value that counts how many of its kind exist.
class CountedValue : public NetSNMPIntNodeData {
 public:
  explicit CountedValue(int number)
      : NetSNMPIntNodeData(&number, eNodeAccessReadOnly, true) {
    ++Alive();
  }
  CountedValue(const CountedValue& source) : NetSNMPIntNodeData(source) {
    ++Alive();
  }
  ~CountedValue() override { --Alive(); }

  NetSNMPNodeData* Clone() const override {
    if (ClonesLeft()-- == 0) throw std::bad_alloc();
    return new CountedValue(*this);
  }

  static int& Alive() {
    static int alive = 0;
    return alive;
  }

 private:
  friend class CloneLimit;

  static constexpr int kNoLimit = std::numeric_limits<int>::max();
  static int& ClonesLeft() {
    static int left = kNoLimit;
    return left;
  }
};

// Lets memory run out, while it lives, once counted values were cloned `clones`
// times.
class CloneLimit {
 public:
  explicit CloneLimit(int clones) { CountedValue::ClonesLeft() = clones; }
  ~CloneLimit() { CountedValue::ClonesLeft() = CountedValue::kNoLimit; }
  CloneLimit(const CloneLimit&) = delete;
  CloneLimit& operator=(const CloneLimit&) = delete;
};

#endif  // SNMPSUBAGENT_TESTS_COUNTEDVALUE_H_
