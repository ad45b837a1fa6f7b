// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_READING_H_
#define SNMPSUBAGENT_TESTING_READING_H_

#include "snmpsubagent/testing/Manager.h"
#include "testing/MasterState.h"

// What a master agent does for GET, GETNEXT and GETBULK (RFC 2741, 7.2.3).
namespace snmpsubagent::testing::internal {

Response Read(MasterState& master, MasterState::Guard& lock,
              const Request& request);

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_READING_H_
