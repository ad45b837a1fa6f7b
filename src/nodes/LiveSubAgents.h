// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_LIVESUBAGENTS_H_
#define SNMPSUBAGENT_NODES_LIVESUBAGENTS_H_

class ISNMPSubAgent;

// The subagents that exist. NetSNMPNode::snmpSubAgent_ and the events of the
// agent library keep the address of a subagent after its destruction, and are
// checked against this list before it is followed.
//
// Threads: any.
namespace live_subagents {

void Add(const ISNMPSubAgent* subAgent);
void Remove(const ISNMPSubAgent* subAgent);
// False for null.
bool Contains(const ISNMPSubAgent* subAgent);

}  // namespace live_subagents

#endif  // SNMPSUBAGENT_NODES_LIVESUBAGENTS_H_
