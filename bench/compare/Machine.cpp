// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Machine.h"

// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
// clang-format on
#include <sys/utsname.h>
#include <unistd.h>

#include <fstream>

namespace {

// The rest of the first line of `file` that begins with `key`.
std::string Entry(const std::string& file, const std::string& key) {
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line.compare(0, key.size(), key) != 0) continue;
    const std::size_t value = line.find_first_not_of(" \t:", key.size());
    return value == std::string::npos ? "" : line.substr(value);
  }
  return "unknown";
}

std::string SystemText() {
  utsname system{};
  uname(&system);
  return std::string(system.sysname) + " " + system.release + " " +
         system.machine;
}

}  // namespace

std::string MachineText() {
  return "machine   " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + " x " +
         Entry("/proc/cpuinfo", "model name") + ", " +
         Entry("/proc/meminfo", "MemTotal") + "\nsystem    " + SystemText() +
         ", " + Entry("/etc/os-release", "PRETTY_NAME=") + ", Net-SNMP " +
         netsnmp_get_version() +
         "\ncompiler  " BENCH_COMPILER "\nflags     " BENCH_FLAGS
         "\nload      " +
         Entry("/proc/loadavg", "") + "\n";
}
