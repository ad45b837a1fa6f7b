// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_EXCEPTIONBARRIER_H_
#define SNMPSUBAGENT_ADAPTER_EXCEPTIONBARRIER_H_

#include <string>

// Catches exceptions of the application before they reach the agent library's C
// frames, which cannot be unwound. A handler, hook or event callback runs its
// body in Run().
namespace exception_barrier {

// If the exception being handled is the interruption of a thread, records it
// for RaisePendingInterruption().
void RecordInterruption() noexcept;

// The exception being handled, as text for a log line.
std::string DescribeException();

// Runs `body`. When it throws, calls `log` with the text of the exception,
// drops what `log` throws, and returns false.
template <typename Body, typename Log>
bool Run(const Body& body, const Log& log) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    RecordInterruption();
    try {
      log(DescribeException());
    } catch (...) {
      RecordInterruption();
    }
    return false;
  }
}

// Throws boost::thread_interrupted if one was caught on this thread since the
// last call.
void RaisePendingInterruption();

}  // namespace exception_barrier

#endif  // SNMPSUBAGENT_ADAPTER_EXCEPTIONBARRIER_H_
