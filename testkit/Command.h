// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_COMMAND_H_
#define SNMPSUBAGENT_TESTKIT_COMMAND_H_

#include <chrono>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "testkit/ChildProcess.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"

namespace testkit {

// What a command wrote and how it ended.
struct CommandResult {
  int exitCode;
  std::string out;
  std::string error;

  bool Succeeded() const { return exitCode == 0; }

  // The lines of `out`.
  std::vector<std::string> Lines() const;
};

// For the messages of failing tests.
std::ostream& operator<<(std::ostream& stream, const CommandResult& result);

// A command that runs while the test goes on.
class Command {
 public:
  Command(const std::vector<std::string>& command,
          const std::map<std::string, std::string>& environment);

  // Waits for the command to end; it is killed at the deadline, exit code 137.
  CommandResult Result(
      std::chrono::milliseconds deadline = Deadlines::Command());

 private:
  FileDescriptor out_;
  FileDescriptor error_;
  ChildProcess process_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_COMMAND_H_
