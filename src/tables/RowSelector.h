// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWSELECTOR_H_
#define SNMPSUBAGENT_TABLES_ROWSELECTOR_H_

struct netsnmp_handler_registration_s;

// The agent library's table iterator compares every row with every request and
// grows with the square of the rows. This puts a handler of ours before it,
// which looks at the requests and lets the hooks hand out those rows alone that
// can be the answer. A table without it is served all the same, slowly.
void PutRowSelectorBeforeIterator(netsnmp_handler_registration_s* registration);

#endif  // SNMPSUBAGENT_TABLES_ROWSELECTOR_H_
