// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_AGENTEVENTS_H_
#define SNMPSUBAGENT_RUNTIME_AGENTEVENTS_H_

class SNMPSubAgent;

// The events of the agent library: one table has all subscriptions, with the
// priority and the receiver of each.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace agent_events {

// Subscribes to all events; those of the session are passed on to `subAgent`.
void Subscribe(SNMPSubAgent* subAgent);

// Detaches the subagent from the agent library before that shuts down: its
// session is no longer up, and it gets no further events. The receivers are not
// called.
void Detach();

}  // namespace agent_events

#endif  // SNMPSUBAGENT_RUNTIME_AGENTEVENTS_H_
