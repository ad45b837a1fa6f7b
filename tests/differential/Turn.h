// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_

#include "TablePair.h"
#include "agentx/Pdu.h"

// The same request, put to the other way.
agentx::Body Turned(agentx::Body request, Way way);

// What a way has answered or notified, without what depends on the time, as if
// it came from the plain way.
agentx::Response Normalised(agentx::Response response);
agentx::Notify Normalised(agentx::Notify notification);

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_TURN_H_
