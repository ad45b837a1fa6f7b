// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPAGENTGUARD_H_
#define SNMPSUBAGENT_NETSNMPAGENTGUARD_H_

#include "SnmpSubAgentExport.h"

// While one exists, no request is processed.
//
// The agent library is not thread-safe, so one process-wide lock protects it.
// The subagent thread holds it except while it waits for something to arrive;
// the library takes it for each of its own calls. An application takes it with
// this guard to change values, rows or the node registry together while the
// subagent runs:
//
//   {
//     NetSNMPAgentGuard guard;
//     temperature = Read();
//     table->AddRow(row);
//   }
//
// The lock is recursive: a thread may nest guards. It is fair, so that nobody
// waits for a busy subagent longer than it takes to serve what has already
// arrived.
//
// Rules:
// - Callbacks (of a value, of the connection, overrides called by the library)
//   run holding the lock, but not those of a value that the application sets by
//   itself: SetNodeData() and the setters do not take it.
// - No SNMPSubAgent may be started, stopped, asked IsRunning() or destroyed
//   under a guard: these wait for the subagent thread, which may be waiting for
//   the lock.
// - A thread that also needs a mutex of the application takes the guard first.
//   Building, registering and deleting nodes and firing traps take the guard by
//   themselves: do none of it while you hold a mutex that a callback takes.
// - Hold it briefly: no manager gets a response meanwhile.
//
// Threads: any. A guard is released by the thread that made it.
class SNMPSUBAGENT_EXPORT NetSNMPAgentGuard {
 public:
  // Waits for the lock, without a limit, and takes it.
  NetSNMPAgentGuard();
  ~NetSNMPAgentGuard();

  NetSNMPAgentGuard(const NetSNMPAgentGuard&) = delete;
  NetSNMPAgentGuard& operator=(const NetSNMPAgentGuard&) = delete;
};

#endif  // SNMPSUBAGENT_NETSNMPAGENTGUARD_H_
