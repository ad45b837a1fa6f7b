// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_LIVINGSUBAGENTS_H_
#define SNMPSUBAGENT_RUNTIME_LIVINGSUBAGENTS_H_

class ISNMPSubAgent;

// The subagents that exist. NetSNMPNode::snmpSubAgent_ and the agent library's
// event callbacks keep naming a subagent after its destruction; here they find
// out. Threads: any.
class LivingSubAgents {
 public:
  static void Add(const ISNMPSubAgent* subAgent);
  static void Remove(const ISNMPSubAgent* subAgent);
  // False for null.
  static bool Contains(const ISNMPSubAgent* subAgent);
};

#endif  // SNMPSUBAGENT_RUNTIME_LIVINGSUBAGENTS_H_
