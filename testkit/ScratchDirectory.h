// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_SCRATCHDIRECTORY_H_
#define SNMPSUBAGENT_TESTKIT_SCRATCHDIRECTORY_H_

#include <filesystem>
#include <string>

namespace testkit {

// A directory of its own, removed with all its contents at the end.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();

  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::filesystem::path Path() const { return path_; }

  // Writes a file of that name; returns its path.
  std::filesystem::path Write(const std::string& name,
                              const std::string& contents) const;

 private:
  std::filesystem::path path_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_SCRATCHDIRECTORY_H_
