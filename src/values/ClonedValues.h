// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_CLONEDVALUES_H_
#define SNMPSUBAGENT_VALUES_CLONEDVALUES_H_

#include <vector>

#include "NetSNMPNodeData.h"

// Clones of values, for as long as it lives.
class ClonedValues {
 public:
  explicit ClonedValues(const std::vector<NetSNMPNodeData*>& values) {
    NetSNMPNodeData::CopyDataVector(values, clones_);
  }
  ~ClonedValues() { NetSNMPNodeData::DestroyDataVector(clones_); }
  ClonedValues(const ClonedValues&) = delete;
  ClonedValues& operator=(const ClonedValues&) = delete;

  const std::vector<NetSNMPNodeData*>& Get() const { return clones_; }

 private:
  std::vector<NetSNMPNodeData*> clones_;
};

#endif  // SNMPSUBAGENT_VALUES_CLONEDVALUES_H_
