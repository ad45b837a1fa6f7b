// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_NODEREGISTRY_H_
#define SNMPSUBAGENT_TESTS_NODEREGISTRY_H_

namespace support {

// The registry of nodes, made as an application makes it; destroyed with all
// its nodes at the end.
class NodeRegistry {
 public:
  NodeRegistry();
  ~NodeRegistry();

  NodeRegistry(const NodeRegistry&) = delete;
  NodeRegistry& operator=(const NodeRegistry&) = delete;
};

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_NODEREGISTRY_H_
