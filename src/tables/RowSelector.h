// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWSELECTOR_H_
#define SNMPSUBAGENT_TABLES_ROWSELECTOR_H_

struct netsnmp_handler_registration_s;

// The agent library's table iterator compares every row with every request, so
// the time of a walk grows with the square of the number of rows. This handler
// comes before it and looks the rows up in the index of the store. If it knows
// the rows of all requests, it calls the handler after the iterator itself;
// else it lets the iterator see only the rows that can match.
namespace row_selector {

// Injects the handler into the chain of a registered table. A table without it
// is served as well, but slowly.
void PutBeforeIterator(netsnmp_handler_registration_s* registration);

}  // namespace row_selector

#endif  // SNMPSUBAGENT_TABLES_ROWSELECTOR_H_
