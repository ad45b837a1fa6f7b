// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table that is filled when managers ask, and at most every ten seconds: the
// files of a folder with their sizes.
//
//   objects_loaded_table [host port]
//
// Host and port are where the master agent takes AgentX sessions.
#include <signal.h>
#include <snmpsubagent.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace snmp = snmpsubagent;

struct File {
  snmp::Counter64 octets;
};

using Files = snmp::Table<std::string, File>;

void List(const std::filesystem::path& folder, Files::Rows& rows) {
  std::error_code none;  // A file may go at any time.
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file(none)) continue;
    rows[entry.path().filename().string()].octets.value = entry.file_size(none);
  }
}

int main(int argc, char* argv[]) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_loaded_table", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.25");

  Files files(module, "1");  // INDEX { fileName }
  files.Column(2, &File::octets)
      .Load([](Files::Rows& rows) { List("/etc", rows); },
            std::chrono::seconds(10));

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
