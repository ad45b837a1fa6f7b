// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_RUNTIME_AGENTSHUTDOWN_H_
#define SNMPSUBAGENT_RUNTIME_AGENTSHUTDOWN_H_

// Parts the subagent and the agent library before that is shut down: its
// session is no longer up, and its event callbacks are taken back, because the
// agent library frees the argument of every callback that it still has. The
// receivers are not told.
void PartWithAgentLibrary();

// Has an agent library that is shut down by others do the same first.
void PartOnShutdown();

#endif  // SNMPSUBAGENT_RUNTIME_AGENTSHUTDOWN_H_
