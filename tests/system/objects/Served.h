// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_OBJECTS_SERVED_H_
#define SNMPSUBAGENT_TESTS_OBJECTS_SERVED_H_

#include <snmpsubagent.h>

#include <mutex>
#include <string>
#include <vector>

#include "support/Answers.h"
#include "testkit/MasterAgent.h"

namespace snmp = snmpsubagent;

// Of any master agent's managers.
using support::SetAt;
using support::ShownAt;

// The log lines of an agent. Threads: any.
class Lines {
 public:
  void Add(const std::string& line);
  std::vector<std::string> All() const;
  // Waits until a line has `text` in it; returns whether one came.
  bool WaitFor(const std::string& text) const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// The master agent of that address; attempts to connect in quick succession.
snmp::AgentOptions OptionsFor(const std::string& master, Lines* log = nullptr);

// Where a subagent connects to it.
std::string AddressOf(const testkit::MasterAgent& master);
std::string AddressOf(int port);

// Waits until the master agent has taken all registrations of the module;
// returns whether it did.
bool WaitUntilRegistered(const snmp::Module& module);

// snmpd, and an agent that serves a module at it.
struct Served {
  static constexpr char kSubtree[] = "1.3.6.1.4.1.32473.9";

  explicit Served(const std::string& configuration = "");

  // Starts the agent. Throws std::runtime_error if it is not served in time.
  void Start();

  // The whole name of a scalar's instance.
  static std::string Name(const std::string& oid);
  // What snmpget shows of a scalar: type and value.
  std::string Shown(const std::string& oid) const;
  // What snmpset says of one SET, varbinds as words for the tool: "None" or the
  // name of the error, and behind it the object that failed.
  std::string Set(const std::vector<std::string>& words) const;

  testkit::MasterAgent master;
  Lines log;
  snmp::Agent agent;
  snmp::Module module;
};

#endif  // SNMPSUBAGENT_TESTS_OBJECTS_SERVED_H_
