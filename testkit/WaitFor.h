// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_WAITFOR_H_
#define SNMPSUBAGENT_TESTKIT_WAITFOR_H_

#include <chrono>
#include <functional>

namespace testkit {

// Polls until `condition` is true; returns whether it was before the deadline.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds deadline);

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_WAITFOR_H_
