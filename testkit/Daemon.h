// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_DAEMON_H_
#define SNMPSUBAGENT_TESTKIT_DAEMON_H_

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "testkit/ChildProcess.h"
#include "testkit/ScratchDirectory.h"

namespace testkit {

// A daemon of Net-SNMP in the foreground, with a configuration, a log and a
// directory for its own files, and nothing of the system's.
class Daemon {
 public:
  Daemon(const std::string& program, const std::string& configuration);

  // Starts the daemon with `arguments` and waits until it has logged that it
  // serves. Throws std::runtime_error, with its log, if it does not.
  void Start(const std::vector<std::string>& arguments);

  // Asks the daemon to end, and waits.
  void End() { process_.reset(); }

  // Kills the daemon at once, and waits.
  void Kill();

  void Signal(int number) const { process_->Signal(number); }

  // The lines that it has logged since its start.
  std::vector<std::string> Log() const;

  std::filesystem::path Directory() const { return directory_.Path(); }

 private:
  std::string program_;
  ScratchDirectory directory_;
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_DAEMON_H_
