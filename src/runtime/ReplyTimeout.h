// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_REPLYTIMEOUT_H_
#define SNMPSUBAGENT_RUNTIME_REPLYTIMEOUT_H_

#include <chrono>

struct snmp_session;

// Enforces SNMPSubAgent::SetReplyTimeout().
//
// When the master agent has left one request without a response, nothing more
// is sent on that session and its connection is closed. Otherwise each of a
// hundred registrations would wait for its own response, one after the other.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace reply_timeout {

// Applies to every AgentX session opened from now on: each request waits for
// `timeout` and is sent again `retries` times, and connecting takes no longer
// than `timeout`. Requires: the agent library is not set up yet.
void Set(std::chrono::microseconds timeout, int retries);

// Sets timeout and retries of a session that is being created, if it is an
// AgentX session and they were chosen.
void ApplyTo(snmp_session* session);

// Watches the transport of a session that has come up, and logs a line if that
// is a session of a kind that ApplyTo() did not know. Does nothing if no
// timeout was set.
void Enforce(snmp_session* session);

}  // namespace reply_timeout

#endif  // SNMPSUBAGENT_RUNTIME_REPLYTIMEOUT_H_
