// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODEREGISTRATION_H_
#define SNMPSUBAGENT_NODES_NODEREGISTRATION_H_

class NetSNMPNode;

// Shared by scalars and both kinds of table when they are registered.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace node_registration {

// Whether `node` has to wait because its OID is still occupied by a
// registration whose withdrawal was deferred. It is registered as soon as that
// has been withdrawn.
bool MustWait(const NetSNMPNode& node);

// Logs on `node`. A line for which there is no memory is dropped: it must not
// leave a node half registered or end a destructor.
void Log(const NetSNMPNode& node, const char* line);

}  // namespace node_registration

#endif  // SNMPSUBAGENT_NODES_NODEREGISTRATION_H_
