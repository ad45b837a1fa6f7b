// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_FILES_H_
#define SNMPSUBAGENT_EXAMPLES_FILES_H_

#include <snmpsubagent.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

namespace snmp = snmpsubagent;

struct File {
  snmp::Counter64 octets;
};

// The files of a folder, read when managers ask.
class Files {
 public:
  Files(snmp::Agent& agent, const std::filesystem::path& folder)
      : module_(agent, "1.3.6.1.4.1.32473.3.25"), table_(module_, "1") {
    table_.Column(2, &File::octets)
        .Load([folder](Table::Rows& rows) { List(folder, rows); },
              std::chrono::seconds(10));
  }

 private:
  using Table = snmp::Table<std::string, File>;  // INDEX { fileName }

  static void List(const std::filesystem::path& folder, Table::Rows& rows) {
    std::error_code none;  // A file may go at any time.
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (!entry.is_regular_file(none)) continue;
      rows[entry.path().filename().string()].octets.value =
          entry.file_size(none);
    }
  }

  snmp::Module module_;
  Table table_;
};

#endif  // SNMPSUBAGENT_EXAMPLES_FILES_H_
