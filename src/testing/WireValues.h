// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_WIREVALUES_H_
#define SNMPSUBAGENT_TESTING_WIREVALUES_H_

#include <vector>

#include "snmpsubagent/testing/Response.h"
#include "testkit/agentx/Pdu.h"

// Between what a test has and the messages of AgentX.
namespace snmpsubagent::testing::internal {

namespace wire = testkit::agentx;

wire::Oid ToWire(const Oid& oid);
wire::Varbind ToWire(const Varbind& varbind);
Oid FromWire(const wire::Oid& oid);
Varbind FromWire(const wire::Varbind& varbind);
std::vector<Varbind> FromWire(const std::vector<wire::Varbind>& varbinds);

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_WIREVALUES_H_
