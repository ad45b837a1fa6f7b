// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_MASTERPATIENCE_H_
#define SNMPSUBAGENT_RUNTIME_MASTERPATIENCE_H_

#include <chrono>

struct snmp_session;

// How long the agent library waits for the master agent, where the application
// has chosen.
//
// A master agent that has left one request without an answer is given up:
// nothing more is sent on that session and its connection is cut. Otherwise
// each of a hundred registrations would wait for its own answer, one after the
// other.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace master_patience {

// Applies to every AgentX session opened from now on: each request waits for
// `timeout` and is sent again `retries` times, and connecting takes no longer
// than `timeout`. Requires: the agent library is not set up yet.
void Limit(std::chrono::microseconds timeout, int retries);

// Watches over a session that has come up. Does nothing without a limit.
void Watch(snmp_session* session);

}  // namespace master_patience

#endif  // SNMPSUBAGENT_RUNTIME_MASTERPATIENCE_H_
