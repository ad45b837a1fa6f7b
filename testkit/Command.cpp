// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/Command.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <sstream>

namespace testkit {
namespace {

std::string Contents(const FileDescriptor& file) {
  std::string contents;
  std::array<char, 4096> chunk;
  ssize_t size = 0;
  while ((size = pread(file.Number(), chunk.data(), chunk.size(),
                       static_cast<off_t>(contents.size()))) > 0) {
    contents.append(chunk.data(), static_cast<std::size_t>(size));
  }
  return contents;
}

}  // namespace

std::vector<std::string> CommandResult::Lines() const {
  std::vector<std::string> lines;
  std::istringstream text(out);
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

std::ostream& operator<<(std::ostream& stream, const CommandResult& result) {
  return stream << "exit code " << result.exitCode << "\n"
                << result.out << result.error;
}

Command::Command(const std::vector<std::string>& command,
                 const std::map<std::string, std::string>& environment)
    : out_(memfd_create("stdout", MFD_CLOEXEC)),
      error_(memfd_create("stderr", MFD_CLOEXEC)),
      process_(command, environment, {out_.Number(), error_.Number()}) {}

CommandResult Command::Result(std::chrono::milliseconds deadline) {
  if (!process_.Wait(deadline)) process_.Kill();
  return {*process_.Wait({}), Contents(out_), Contents(error_)};
}

}  // namespace testkit
