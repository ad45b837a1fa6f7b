// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Resources.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

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

void Resources::RequireNoGrowth(const Resources& after,
                                std::size_t leeway) const {
  if (after.heap > heap + leeway) throw std::runtime_error("memory grows");
  if (after.descriptors > descriptors) {
    throw std::runtime_error("descriptors grow");
  }
  if (after.threads > threads) throw std::runtime_error("threads grow");
}

void CountMemoryExactly(char** argv) {
  constexpr char kName[] = "GLIBC_TUNABLES";
  if (getenv(kName) != nullptr) return;
  setenv(kName, "glibc.malloc.arena_max=1:glibc.malloc.tcache_count=0", 1);
  execv("/proc/self/exe", argv);
}
