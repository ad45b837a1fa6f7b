// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_RECONNECTWORKAROUNDS_H_
#define SNMPSUBAGENT_RUNTIME_RECONNECTWORKAROUNDS_H_

// Workarounds for Net-SNMP's handling of lost AgentX sessions:
//
// - A master agent that closes a connection during an attempt to open a session
//   makes Net-SNMP register another alarm for further attempts, so that their
//   number doubles with every ping interval. One alarm is kept.
// - A session that is lost while its nodes are registered leaves the others
//   marked as registered, and the next session would skip them.
// - A registration without a response in time is forgotten, and the node is not
//   served from then on. Such a session counts as lost.
// - When a connection attempt fails, Net-SNMP cancels the alarm whose number
//   equals the session's security model. These small numbers are consumed at
//   start-up, so that no real alarm gets one.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace reconnect_workarounds {

// Consumes the small alarm numbers. Requires: the agent library is not yet
// initialised.
void ConsumeAlarmNumbers();

// To be called when a session has come up, when it is lost, and after a
// registration request to the master agent; see AgentEvents.
void SessionStarted();
void SessionLost();
void RegistrationRequested();

// Repairs what a lost session left behind. To be called before alarms are run.
void RepairAfterLoss();

}  // namespace reconnect_workarounds

#endif  // SNMPSUBAGENT_RUNTIME_RECONNECTWORKAROUNDS_H_
