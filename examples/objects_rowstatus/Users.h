// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_USERS_H_
#define SNMPSUBAGENT_EXAMPLES_USERS_H_

#include <snmpsubagent.h>

#include <cstdint>
#include <iostream>
#include <string>

namespace snmp = snmpsubagent;

struct User {
  std::string shell;
  std::uint32_t quota = 1000;
};

// The users of a device, root among them.
class Users {
 public:
  explicit Users(snmp::Agent& agent)
      : module_(agent, "1.3.6.1.4.1.32473.3.26"), table_(module_, "1") {
    table_.Column(2, &User::shell, snmp::ReadCreate().Size(1, 64).Required())
        .Column(3, &User::quota, snmp::ReadCreate().Range(0, 1000000))
        .RowStatus(4)
        .Limit(100)
        .Check(ShellIsAPath)
        .Changed(Tell);
    table_.Insert("root", {"/bin/sh", 0});
  }

 private:
  using Change = snmp::RowChange<std::string, User>;

  static snmp::SetError ShellIsAPath(const Change& change) {
    return change.after && !change.after->shell.empty() &&
                   change.after->shell[0] != '/'
               ? snmp::SetError::InconsistentValue
               : snmp::SetError::None;
  }
  static void Tell(const Change& change) {
    if (change.statusAfter == snmp::RowStatus::Active) {
      std::cout << change.key << " may log in" << std::endl;
    } else if (change.statusBefore == snmp::RowStatus::Active) {
      std::cout << change.key << " is locked out" << std::endl;
    }
  }

  snmp::Module module_;
  snmp::Table<std::string, User> table_;  // INDEX { userName }
};

#endif  // SNMPSUBAGENT_EXAMPLES_USERS_H_
