// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_MANAGER_H_
#define SNMPSUBAGENT_TESTKIT_MANAGER_H_

#include <memory>
#include <string>
#include <vector>

#include "testkit/Command.h"

namespace testkit {

// A manager that speaks to an agent with the Net-SNMP command-line tools:
// SNMPv2c, OIDs and values without MIB names ("-On -Oe").
//
// Threads: any.
class Manager {
 public:
  // `address` is where the agent listens, host:port for UDP; `directory` is
  // where the tools find no configuration and keep their own files.
  Manager(const std::string& address, const std::string& directory);

  CommandResult Get(const std::string& oid) const;
  CommandResult GetNext(const std::string& oid) const;
  CommandResult Walk(const std::string& oid) const;
  CommandResult BulkWalk(const std::string& oid) const;

  // What Walk() shows: a line for each object, none for the end.
  std::vector<std::string> Objects(const std::string& oid) const;

  // Sets objects in one request: OID, type letter of snmpset(1) and value of
  // each in turn.
  CommandResult Set(const std::vector<std::string>& bindings) const;

  // Any of the tools, with words behind those that name the agent: options,
  // OIDs.
  CommandResult Run(const std::string& tool,
                    const std::vector<std::string>& words) const;

  // A SET without waiting for the answer.
  std::unique_ptr<Command> StartSet(
      const std::vector<std::string>& bindings) const;

 private:
  std::unique_ptr<Command> Start(const std::string& tool,
                                 const std::vector<std::string>& words) const;

  std::string address_;
  std::string directory_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_MANAGER_H_
