// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_WAITFOR_H_
#define SNMPSUBAGENT_TESTS_WAITFOR_H_

#include <chrono>
#include <functional>

namespace support {

// Waits until `condition` holds, asking again and again; returns whether it
// came to hold before the deadline.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds deadline);

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_WAITFOR_H_
