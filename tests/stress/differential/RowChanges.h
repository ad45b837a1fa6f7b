// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_ROWCHANGES_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_ROWCHANGES_H_

#include "TablePair.h"
#include "support/Random.h"

// Adds a row with random indexes and cells, or replaces one.
void AddRandomRow(Rows& rows, Random& random);

// Changes the rows in one of the ways that an application has.
void ChangeRows(Rows& rows, Random& random);

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_ROWCHANGES_H_
