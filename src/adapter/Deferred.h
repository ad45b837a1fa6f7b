// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_DEFERRED_H_
#define SNMPSUBAGENT_ADAPTER_DEFERRED_H_

#include <string>

struct netsnmp_handler_registration_s;
struct netsnmp_iterator_info_s;
struct netsnmp_table_data_set_s;

// What is done to a registration as soon as Net-SNMP no longer uses it; see
// InUse.h. The registrations wait in a list of which they are themselves the
// links, so that deferring needs no memory.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace deferred {

// Withdraws `registration`, at once if it is not in use; returns what Net-SNMP
// returns, and 0 if it was deferred. A deferred one takes `*iteratorInfo` with
// it, if there is one, and leaves null; its hooks find no table any more.
int Withdraw(netsnmp_handler_registration_s* registration,
             netsnmp_iterator_info_s** iteratorInfo = nullptr);

// Removes all rows of `set`, at once unless `registration`, that of its table,
// is in use: during a SET Net-SNMP keeps the addresses of rows. Null for a set
// that is not registered.
void ClearDataSet(netsnmp_table_data_set_s* set,
                  netsnmp_handler_registration_s* registration);

// Whether a registration whose withdrawal was deferred still occupies the OID.
// If so, `retry` is called with `name` as soon as it has been withdrawn; once,
// however often it was requested. Returns false without memory for it.
bool WhenFree(const unsigned long* oid, unsigned int oidLen,
              const std::string& name, void (*retry)(const std::string& name));

// Does what has become possible. The event loop calls it when it has read.
void Run();

// Drops everything: the agent library is about to free its registrations.
void Drop();

}  // namespace deferred

#endif  // SNMPSUBAGENT_ADAPTER_DEFERRED_H_
