// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_OWNEDVALUES_H_
#define SNMPSUBAGENT_VALUES_OWNEDVALUES_H_

#include <vector>

#include "NetSNMPNodeData.h"

// Clones of values, for as long as it lives.
class OwnedValues {
 public:
  explicit OwnedValues(const std::vector<NetSNMPNodeData*>& values) {
    NetSNMPNodeData::CopyDataVector(values, clones_);
  }
  ~OwnedValues() { NetSNMPNodeData::DestroyDataVector(clones_); }
  OwnedValues(const OwnedValues&) = delete;
  OwnedValues& operator=(const OwnedValues&) = delete;

  const std::vector<NetSNMPNodeData*>& Get() const { return clones_; }

 private:
  std::vector<NetSNMPNodeData*> clones_;
};

#endif  // SNMPSUBAGENT_VALUES_OWNEDVALUES_H_
