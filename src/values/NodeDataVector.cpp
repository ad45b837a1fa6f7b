// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <memory>

#include "NetSNMPNodeData.h"

namespace {

// Appends `value`, which is deleted if the vector cannot grow.
void Append(std::vector<NetSNMPNodeData*>& values, NetSNMPNodeData* value) {
  std::unique_ptr<NetSNMPNodeData> owned(value);
  values.push_back(value);
  owned.release();
}

// Clones of the elements, in order.
std::vector<NetSNMPNodeData*> CloneAll(
    const std::vector<NetSNMPNodeData*>& source) {
  std::vector<NetSNMPNodeData*> clones;
  clones.reserve(source.size());
  try {
    for (const NetSNMPNodeData* value : source) {
      Append(clones, value == nullptr ? nullptr : value->Clone());
    }
  } catch (...) {
    NetSNMPNodeData::DestroyDataVector(clones);
    throw;
  }
  return clones;
}

}  // namespace

void NetSNMPNodeData::DestroyDataVector(std::vector<NetSNMPNodeData*>& values) {
  while (!values.empty()) {
    delete values.back();
    values.pop_back();
  }
}

void NetSNMPNodeData::CatDataVector(std::vector<NetSNMPNodeData*>& destination,
                                    const NetSNMPNodeData& value) {
  Append(destination, value.Clone());
}

void NetSNMPNodeData::CatDataVector(
    const std::vector<NetSNMPNodeData*>& source,
    std::vector<NetSNMPNodeData*>& destination) {
  destination.reserve(destination.size() + source.size());
  const std::vector<NetSNMPNodeData*> clones = CloneAll(source);
  destination.insert(destination.end(), clones.begin(), clones.end());
}

void NetSNMPNodeData::CopyDataVector(
    const std::vector<NetSNMPNodeData*>& source,
    std::vector<NetSNMPNodeData*>& destination) {
  if (&source == &destination) return;
  DestroyDataVector(destination);
  CatDataVector(source, destination);
}

std::vector<NetSNMPNodeData*>* NetSNMPNodeData::CopyDataVector(
    const std::vector<NetSNMPNodeData*>& source) {
  return new std::vector<NetSNMPNodeData*>(CloneAll(source));
}
