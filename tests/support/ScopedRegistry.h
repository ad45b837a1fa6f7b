// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SCOPEDREGISTRY_H_
#define SNMPSUBAGENT_TESTS_SCOPEDREGISTRY_H_

#include <map>
#include <string>

#include "NetSNMPNode.h"

// The registry of nodes, made as an application makes it; destroyed with all
// its nodes at the end.
class ScopedRegistry {
 public:
  ScopedRegistry() {
    NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  }
  ~ScopedRegistry() { NetSNMPNode::DeleteNodeMap(); }
  ScopedRegistry(const ScopedRegistry&) = delete;
  ScopedRegistry& operator=(const ScopedRegistry&) = delete;
};

#endif  // SNMPSUBAGENT_TESTS_SCOPEDREGISTRY_H_
