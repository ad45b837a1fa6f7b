// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/Manager.h"

#include "testkit/Deadlines.h"

namespace testkit {
namespace {

// One try, and time enough for it: a repeated SET would count twice.
std::vector<std::string> Words(const std::string& tool,
                               const std::string& address) {
  const auto seconds = Deadlines::Command().count() / 2000;
  return {tool,     "-v2c", "-c",
          "public", "-On",  "-Oe",
          "-r0",    "-t",   std::to_string(seconds),
          address};
}

}  // namespace

Manager::Manager(const std::string& address, const std::string& directory)
    : address_(address), directory_(directory) {}

CommandResult Manager::Get(const std::string& oid) const {
  return Start("snmpget", {oid})->Result();
}

CommandResult Manager::GetNext(const std::string& oid) const {
  return Start("snmpgetnext", {oid})->Result();
}

CommandResult Manager::Walk(const std::string& oid) const {
  return Start("snmpwalk", {oid})->Result();
}

CommandResult Manager::BulkWalk(const std::string& oid) const {
  return Start("snmpbulkwalk", {oid})->Result();
}

std::vector<std::string> Manager::Objects(const std::string& oid) const {
  std::vector<std::string> objects;
  for (const std::string& line : Walk(oid).Lines()) {
    const bool isEnd = line.find(" = No ") != std::string::npos;
    if (!isEnd) objects.push_back(line);
  }
  return objects;
}

CommandResult Manager::Set(const std::vector<std::string>& bindings) const {
  return StartSet(bindings)->Result();
}

CommandResult Manager::Run(const std::string& tool,
                           const std::vector<std::string>& words) const {
  return Start(tool, words)->Result();
}

std::unique_ptr<Command> Manager::StartSet(
    const std::vector<std::string>& bindings) const {
  return Start("snmpset", bindings);
}

std::unique_ptr<Command> Manager::Start(
    const std::string& tool, const std::vector<std::string>& words) const {
  std::vector<std::string> command = Words(tool, address_);
  command.insert(command.end(), words.begin(), words.end());
  return std::make_unique<Command>(command,
                                   std::map<std::string, std::string>{
                                       {"MIBS", ""},
                                       {"SNMPCONFPATH", directory_},
                                       {"SNMP_PERSISTENT_DIR", directory_},
                                   });
}

}  // namespace testkit
