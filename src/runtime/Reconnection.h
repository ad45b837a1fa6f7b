// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_RECONNECTION_H_
#define SNMPSUBAGENT_RUNTIME_RECONNECTION_H_

// What the agent library gets wrong about a session that is lost and made
// again, put right:
//
// - A master agent that hangs up on an attempt to reach it makes the agent
//   library register another alarm for further attempts, so that their number
//   doubles with every ping interval. One alarm is kept.
// - A session that is lost while its nodes are registered leaves the others
//   marked as if they had been, and the next session would pass them over.
// - A registration that the master agent does not answer in time is forgotten,
//   and nobody serves the node from then on. Such a session counts as lost.
// - An alarm whose number is that of the session's security model is ended when
//   an attempt fails. Those numbers are used up before there are others.
//
// Threads: all of it holding the lock of NetSNMPAgentGuard.

// Requires: the agent library is not yet initialised.
void WatchReconnection();

// To be called before alarms are run.
void PutReconnectionRight();

#endif  // SNMPSUBAGENT_RUNTIME_RECONNECTION_H_
