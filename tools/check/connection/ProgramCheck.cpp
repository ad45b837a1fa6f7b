// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/ProgramCheck.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <vector>

namespace snmpsubagent::check {
namespace {

// What `command` writes to both of its outputs; nothing if it can't be started.
std::optional<std::string> OutputOf(std::vector<std::string> command) {
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  int ends[2];
  if (pipe(ends) != 0) return std::nullopt;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  posix_spawn_file_actions_addclose(&actions, ends[0]);
  posix_spawn_file_actions_addclose(&actions, ends[1]);
  pid_t child = 0;
  const int error =
      posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string output;
  std::array<char, 4096> piece;
  for (ssize_t size = 0;
       error == 0 && (size = read(ends[0], piece.data(), piece.size())) > 0;) {
    output.append(piece.data(), static_cast<std::size_t>(size));
  }
  close(ends[0]);
  if (error != 0) return std::nullopt;
  waitpid(child, nullptr, 0);
  return output;
}

// "libfoo.so.1 => not found", or "version `X' not found (required by ...)".
std::string MissingIn(const std::string& output) {
  std::istringstream lines(output);
  std::string missing;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("not found") == std::string::npos) continue;
    const std::size_t begin = line.find_first_not_of(" \t");
    missing += (missing.empty() ? "" : ", ") + line.substr(begin);
  }
  return missing;
}

}  // namespace

std::optional<Diagnosis> CheckProgram(const std::string& program) {
  if (access(program.c_str(), X_OK) != 0) {
    return Diagnosis{Cause::ProgramMissing,
                     program + " can't be executed: " + std::strerror(errno),
                     "install the subagent, or name its file"};
  }
  const std::optional<std::string> output = OutputOf({"ldd", program});
  const std::string missing = output ? MissingIn(*output) : "";
  if (missing.empty()) return std::nullopt;
  return Diagnosis{
      Cause::LibraryMissing, program + " can't be loaded: " + missing,
      "install the package with that library, or name its folder in "
      "/etc/ld.so.conf.d and run ldconfig"};
}

}  // namespace snmpsubagent::check
