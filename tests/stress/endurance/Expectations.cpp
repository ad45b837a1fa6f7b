// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Expectations.h"

#include <algorithm>
#include <stdexcept>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace {

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += "  " + line + "\n";
  return text;
}

void RequireSame(const std::vector<std::string>& served,
                 const std::vector<std::string>& known) {
  Require(served == known,
          "served:\n" + Joined(served) + "expected:\n" + Joined(known));
}

bool EndsWith(const std::string& line, const std::string& end) {
  return line.size() >= end.size() &&
         line.compare(line.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

void RequireWalked(const testkit::Manager& manager, const std::string& subtree,
                   const std::vector<std::string>& lines) {
  RequireSame(manager.Objects(subtree), lines);
  std::vector<std::string> bulk = manager.BulkWalk(subtree).Lines();
  bulk.erase(std::remove_if(bulk.begin(), bulk.end(),
                            [](const std::string& line) {
                              return line.find(" = No ") != std::string::npos;
                            }),
             bulk.end());
  RequireSame(bulk, lines);
}

void AwaitWalked(const testkit::Manager& manager, const std::string& subtree,
                 const std::vector<std::string>& lines) {
  std::vector<std::string> served;
  testkit::WaitFor(
      [&] {
        served = manager.Objects(subtree);
        return served == lines;
      },
      testkit::Deadlines::Session());
  RequireSame(served, lines);
}

void RequireNumbered(const std::vector<std::string>& received,
                     const std::string& name, const std::string& object,
                     std::size_t count) {
  std::size_t number = 0;
  for (const std::string& line : received) {
    if (line.find(" = OID: " + name + ";") == std::string::npos) continue;
    ++number;
    Require(EndsWith(line, name + "; " + object +
                               " = INTEGER: " + std::to_string(number)),
            "notification " + std::to_string(number) + " arrived as: " + line);
  }
  Require(number == count, std::to_string(number) + " notifications of " +
                               std::to_string(count) + " arrived: " + name);
}
