// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Resources.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/Threads.h"

namespace {

std::size_t ResidentBytes() {
  std::size_t size = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t DescriptorCount() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(
      std::distance(begin(descriptors), end(descriptors)));
}

// Only glibc tells. Elsewhere a leak shows in the resident size alone.
std::size_t AllocatedBytes() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

}  // namespace

Resources Resources::Now() {
  return {AllocatedBytes(), ResidentBytes(), DescriptorCount(),
          support::ThreadCount()};
}

std::string Resources::Text() const {
  return std::to_string(heap / 1024) + " KiB allocated, " +
         std::to_string(resident / 1024) + " KiB resident, " +
         std::to_string(descriptors) + " descriptors, " +
         std::to_string(threads) + " threads";
}
