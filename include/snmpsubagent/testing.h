// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_H_

// The test kit: what the author of a service tests it with. All of it.
//
//   Master    a master agent in the process of the test
//   Snmpd     a real one: snmpd, on free loopback ports
//   CheckMib  compares what is served with the MIB
//   Clock     virtual time
//   Loop      an event loop on the thread of the test
//
// With GoogleTest, <snmpsubagent/testing/Matchers.h> has matchers beside it.
#include "snmpsubagent/testing/CheckMib.h"
#include "snmpsubagent/testing/Clock.h"
#include "snmpsubagent/testing/Loop.h"
#include "snmpsubagent/testing/Manager.h"
#include "snmpsubagent/testing/Master.h"
#include "snmpsubagent/testing/Response.h"
#include "snmpsubagent/testing/Snmpd.h"
#include "snmpsubagent/testing/Value.h"

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_H_
