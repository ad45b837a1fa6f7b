// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_THREADS_H_
#define SNMPSUBAGENT_TESTS_THREADS_H_

#include <cstddef>

namespace support {

// How many threads this process has now.
std::size_t ThreadCount();

// Waits until it has so many; returns whether it came to have them. A thread
// that has been joined may be counted for a moment longer.
bool WaitForThreadCount(std::size_t count);

}  // namespace support

#endif  // SNMPSUBAGENT_TESTS_THREADS_H_
