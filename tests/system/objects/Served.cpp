// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Served.h"

#include <algorithm>
#include <stdexcept>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;

void Lines::Add(const std::string& line) {
  const std::lock_guard lock(mutex_);
  lines_.push_back(line);
}

std::vector<std::string> Lines::All() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

bool Lines::WaitFor(const std::string& text) const {
  return testkit::WaitFor(
      [&] {
        const std::vector<std::string> lines = All();
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) {
                             return line.find(text) != std::string::npos;
                           });
      },
      Deadlines::Session());
}

snmp::AgentOptions OptionsFor(const std::string& master, Lines* log) {
  snmp::AgentOptions options;
  options.master = master;
  options.firstRetry = std::chrono::milliseconds(20);
  options.lastRetry = std::chrono::milliseconds(100);
  options.log = [log](snmp::LogLevel, const std::string& line) {
    if (log) log->Add(line);
  };
  return options;
}

std::string AddressOf(int port) {
  return "tcp:127.0.0.1:" + std::to_string(port);
}

std::string AddressOf(const testkit::MasterAgent& master) {
  return AddressOf(master.AgentXPort());
}

bool WaitUntilRegistered(const snmp::Module& module) {
  return testkit::WaitFor([&] { return module.IsRegistered(); },
                          Deadlines::Session());
}

Served::Served(const std::string& configuration)
    : master(configuration),
      agent("the tests", OptionsFor(AddressOf(master), &log)),
      module(agent, kSubtree) {}

void Served::Start() {
  agent.Start();
  if (!WaitUntilRegistered(module)) {
    throw std::runtime_error("the module is not registered");
  }
}

std::string Served::Name(const std::string& oid) {
  return "." + std::string(kSubtree) + "." + oid + ".0";
}

std::string Served::Shown(const std::string& oid) const {
  return ShownAt(master.Manager(), Name(oid));
}

std::string Served::Set(const std::vector<std::string>& words) const {
  return SetAt(master.Manager(), words);
}
