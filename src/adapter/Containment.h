// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_CONTAINMENT_H_
#define SNMPSUBAGENT_ADAPTER_CONTAINMENT_H_

#include <string>

// Keeps exceptions of the application out of the agent library's C frames,
// which could not be unwound. A handler, hook or event callback runs its body
// in Contain().
namespace containment {

// Notes, if the exception being handled is the interruption of a thread, that
// RaisePendingInterruption() has to raise it again.
void NoteInterruption() noexcept;

// The exception being handled, as text for a log line.
std::string DescribeException();

// Runs `body`. When it throws, calls `log` with a text that says what, drops
// what `log` throws, and returns false.
template <typename Body, typename Log>
bool Contain(const Body& body, const Log& log) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    NoteInterruption();
    try {
      log(DescribeException());
    } catch (...) {
      NoteInterruption();
    }
    return false;
  }
}

// Throws boost::thread_interrupted if one was contained on this thread since
// the last call.
void RaisePendingInterruption();

}  // namespace containment

#endif  // SNMPSUBAGENT_ADAPTER_CONTAINMENT_H_
