// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_

#include "TablePair.h"
#include "testkit/agentx/Pdu.h"

// The same request for the other way.
testkit::agentx::Body Turned(testkit::agentx::Body request, Way way);

// The response or notification without what depends on the time, as if it came
// from the plain way.
testkit::agentx::Response Normalised(testkit::agentx::Response response);
testkit::agentx::Notify Normalised(testkit::agentx::Notify notification);

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_
