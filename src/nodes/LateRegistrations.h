// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_LATEREGISTRATIONS_H_
#define SNMPSUBAGENT_NODES_LATEREGISTRATIONS_H_

class NetSNMPNode;

// Nodes that are to be registered at an OID whose former registration the agent
// library still has in hand: a callback replaced a node that its PDU names.
//
// Requires, for both: the lock of NetSNMPAgentGuard.
namespace late_registrations {

// Whether `node` has to wait; it is registered by CatchUp() then.
bool Await(const NetSNMPNode& node);

// Makes the withdrawals that have become possible, and registers the nodes that
// waited for them. The event loop calls it when it has read.
void CatchUp();

}  // namespace late_registrations

#endif  // SNMPSUBAGENT_NODES_LATEREGISTRATIONS_H_
