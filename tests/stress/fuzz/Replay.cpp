// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Gives a fuzz target the inputs in the directories named, for compilers
// without a fuzzer. The name of each is shown before, so that the last one
// shown is the one that fails.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size);

int main(int count, char** directories) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const auto& entry :
         std::filesystem::directory_iterator(directories[i])) {
      std::printf("%s\n", entry.path().c_str());
      std::fflush(stdout);
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> input{std::istreambuf_iterator<char>(file), {}};
      LLVMFuzzerTestOneInput(
          reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
      ++replayed;
    }
  }
  // A corpus that is not found must not pass for one without findings.
  return replayed == 0;
}
