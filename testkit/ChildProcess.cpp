// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/ChildProcess.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace testkit {
namespace {

std::string FindProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream directories(std::string(path != nullptr ? path : "") +
                                 ":/usr/bin:/usr/sbin:/sbin");
  for (std::string directory; std::getline(directories, directory, ':');) {
    const std::string program = std::filesystem::path(directory) / name;
    if (access(program.c_str(), X_OK) == 0) return program;
  }
  throw std::runtime_error(name + " is not installed");
}

// The test's environment, with `additions` in place of variables of the same
// name, as texts "name=value".
std::vector<std::string> Environment(
    const std::map<std::string, std::string>& additions) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string variable = *entry;
    if (additions.count(variable.substr(0, variable.find('='))) == 0)
      result.push_back(variable);
  }
  for (const auto& [name, value] : additions)
    result.push_back(name + "=" + value);
  return result;
}

// The form in which execve() takes `texts`, which it borrows.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

// Runs in the child, a copy of a process with several threads: only calls that
// are safe in a signal handler are allowed until the program takes over.
[[noreturn]] void BecomeProgram(pid_t parent, const char* program,
                                char* const* arguments,
                                char* const* environment,
                                ChildProcess::Streams streams) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
  dup2(streams.out, STDOUT_FILENO);
  dup2(streams.error, STDERR_FILENO);
  // The agent library's connections are not closed by execve().
  syscall(SYS_close_range, STDERR_FILENO + 1, ~0U, 0);
  execve(program, arguments, environment);
  _exit(127);
}

int ExitCode(int status) {
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

ChildProcess::ChildProcess(
    const std::vector<std::string>& command,
    const std::map<std::string, std::string>& environment, Streams streams) {
  const std::string program = FindProgram(command.front());
  std::vector<std::string> arguments = command;
  std::vector<std::string> variables = Environment(environment);
  const std::vector<char*> argumentPointers = Pointers(arguments);
  const std::vector<char*> variablePointers = Pointers(variables);
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (pid_ == 0) {
    BecomeProgram(parent, program.c_str(), argumentPointers.data(),
                  variablePointers.data(), streams);
  }
}

ChildProcess::~ChildProcess() { End(); }

std::optional<int> ChildProcess::Wait(std::chrono::milliseconds deadline) {
  WaitFor([this] { return !IsRunning(); }, deadline);
  return exitCode_;
}

bool ChildProcess::IsRunning() {
  int status = 0;
  if (!exitCode_ && waitpid(pid_, &status, WNOHANG) == pid_)
    exitCode_ = ExitCode(status);
  return !exitCode_;
}

void ChildProcess::Signal(int number) const {
  if (!exitCode_) kill(pid_, number);
}

void ChildProcess::End() {
  if (!IsRunning()) return;
  Signal(SIGCONT);
  Signal(SIGTERM);
  if (!Wait(Deadlines::Daemon())) Kill();
}

void ChildProcess::Kill() {
  if (!IsRunning()) return;
  Signal(SIGKILL);
  int status = 0;
  waitpid(pid_, &status, 0);
  exitCode_ = ExitCode(status);
}

}  // namespace testkit
