// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_VALUES_H_
#define SNMPSUBAGENT_TESTS_VALUES_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

// Values that hold what they are given.

inline NetSNMPIntNodeData Int(int number,
                              eNodeAccessMode mode = eNodeAccessReadOnly) {
  return NetSNMPIntNodeData(&number, mode, true);
}

inline NetSNMPUnsignedIntNodeData Unsigned(
    unsigned int number, eNodeAccessMode mode = eNodeAccessReadOnly) {
  return NetSNMPUnsignedIntNodeData(&number, mode, true);
}

inline NetSNMPStringNodeData Text(std::string text,
                                  eNodeAccessMode mode = eNodeAccessReadOnly) {
  return NetSNMPStringNodeData(&text, mode, true);
}

inline NetSNMPBoolNodeData Bool(bool truth,
                                eNodeAccessMode mode = eNodeAccessReadOnly) {
  return NetSNMPBoolNodeData(&truth, mode, true);
}

// `value` as an index of a row.
template <typename Value>
Value Index(const Value& value) {
  Value index = value;
  index.isIndex_ = true;
  return index;
}

// Values in the form in which rows and templates travel: a vector whose
// elements the application owns.
class Values {
 public:
  // Holds clones of `values`.
  template <typename... Value>
  explicit Values(const Value&... values) : Values(nullptr) {
    (NetSNMPNodeData::CatDataVector(values_, values), ...);
  }
  Values(Values&& other) noexcept : values_(std::exchange(other.values_, {})) {}
  ~Values() { NetSNMPNodeData::DestroyDataVector(values_); }

  operator const std::vector<NetSNMPNodeData*>&() const { return values_; }

  NetSNMPNodeData* operator[](std::size_t position) const {
    return values_[position];
  }

 private:
  // Complete before the clones are made, so that they go if one cannot be.
  explicit Values(std::nullptr_t) {}

  std::vector<NetSNMPNodeData*> values_;
};

#endif  // SNMPSUBAGENT_TESTS_VALUES_H_
