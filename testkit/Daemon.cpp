// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/Daemon.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/WaitFor.h"

namespace testkit {
namespace {

constexpr char kConfiguration[] = "daemon.conf";
constexpr char kLog[] = "daemon.log";

// Logged when the sockets are open and the configuration is read.
bool IsServing(const std::vector<std::string>& log) {
  return std::any_of(log.begin(), log.end(), [](const std::string& line) {
    return line.find("NET-SNMP version") == 0;
  });
}

}  // namespace

Daemon::Daemon(const std::string& program, const std::string& configuration)
    : program_(program) {
  directory_.Write(kConfiguration, configuration);
}

void Daemon::Start(const std::vector<std::string>& arguments) {
  const std::string log = Directory() / kLog;
  const FileDescriptor output(
      open(log.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600));
  std::vector<std::string> command{
      program_, "-f", "-C", "-c", Directory() / kConfiguration, "-Lo"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  process_ = std::make_unique<ChildProcess>(
      command,
      std::map<std::string, std::string>{{"MIBS", ""},
                                         {"SNMPCONFPATH", Directory()},
                                         {"SNMP_PERSISTENT_DIR", Directory()}},
      ChildProcess::Streams{output.Number(), output.Number()});
  WaitFor([this] { return !process_->IsRunning() || IsServing(Log()); },
          Deadlines::Daemon());
  if (process_->IsRunning() && IsServing(Log())) return;

  std::string message = program_ + " does not serve";
  for (const std::string& line : Log()) message += "\n" + line;
  throw std::runtime_error(message);
}

void Daemon::Kill() {
  process_->Kill();
  process_.reset();
}

std::vector<std::string> Daemon::Log() const {
  std::vector<std::string> lines;
  std::ifstream log(Directory() / kLog);
  for (std::string line; std::getline(log, line);) lines.push_back(line);
  return lines;
}

}  // namespace testkit
