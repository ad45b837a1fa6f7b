// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_WORKLOAD_H_
#define SNMPSUBAGENT_BENCH_COMPARE_WORKLOAD_H_

#include <functional>

#include "testkit/agentx/Pdu.h"

// The request of every step, counted from 0: the same for each subagent, over
// all scalars or rows in a scattered order that repeats itself.
using Workload = std::function<testkit::agentx::Body(unsigned int step)>;

// GET, or GETNEXT, of one scalar of `count`.
Workload GetScalar(unsigned int count);
Workload GetNextScalar(unsigned int count);

// SET of one of those scalars of `count` that are integers, to changing values.
Workload SetScalar(unsigned int count);

// GETNEXT from a cell of a table.
Workload GetNextCell(unsigned int rows);

// GET, or GETNEXT, of five columns of a row in one message.
Workload GetFiveColumns(unsigned int rows);
Workload GetNextFiveColumns(unsigned int rows);

// SET that makes a subagent send `count` notifications.
Workload SendNotifications(int count);

// The object of scalar `k`, the first column of row `r`, and the scalar of the
// notifications.
testkit::agentx::Oid ScalarOid(unsigned int k);
testkit::agentx::Oid CellOid(unsigned int column, unsigned int row);
testkit::agentx::Oid NotifiedOid();

#endif  // SNMPSUBAGENT_BENCH_COMPARE_WORKLOAD_H_
