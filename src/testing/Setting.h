// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_SETTING_H_
#define SNMPSUBAGENT_TESTING_SETTING_H_

#include "snmpsubagent/testing/Manager.h"
#include "testing/MasterState.h"

// What a master agent does for a SET (RFC 2741, 7.2.4).
namespace snmpsubagent::testing::internal {

Response Set(MasterState& master, MasterState::Guard& lock,
             const Request& request);

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_SETTING_H_
