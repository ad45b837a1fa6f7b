// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_CHILDPROCESS_H_
#define SNMPSUBAGENT_TESTKIT_CHILDPROCESS_H_

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testkit {

// A program run as a child of the test. It never outlives the test: the
// destructor ends it, and the system does if the test dies.
class ChildProcess {
 public:
  // Where the child's standard output and error go: descriptors of this
  // process, borrowed.
  struct Streams {
    int out;
    int error;
  };

  // Runs `command`, its first word looked up in PATH and in the directories
  // of the system's daemons. `environment` is added to the test's own. Throws
  // std::runtime_error if there is no such program.
  ChildProcess(const std::vector<std::string>& command,
               const std::map<std::string, std::string>& environment,
               Streams streams);

  // Ends the child as End() does.
  ~ChildProcess();

  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Waits for the child to end by itself. Returns its exit code, 128 + the
  // signal that ended it, or nothing if it still runs at the deadline.
  std::optional<int> Wait(std::chrono::milliseconds deadline);

  bool IsRunning();

  pid_t Id() const { return pid_; }

  void Signal(int number) const;

  // Asks the child to end with SIGTERM; kills it at the deadline.
  void End();

  // Kills the child at once.
  void Kill();

 private:
  pid_t pid_;
  std::optional<int> exitCode_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_CHILDPROCESS_H_
