// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/ScratchDirectory.h"

#include <stdlib.h>

#include <cerrno>
#include <fstream>
#include <system_error>

namespace testkit {

ScratchDirectory::ScratchDirectory() {
  std::string name =
      std::filesystem::temp_directory_path() / "snmpsubagent-test-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), name);
  }
  path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path ScratchDirectory::Write(
    const std::string& name, const std::string& contents) const {
  const std::filesystem::path file = path_ / name;
  std::ofstream(file) << contents;
  return file;
}

}  // namespace testkit
