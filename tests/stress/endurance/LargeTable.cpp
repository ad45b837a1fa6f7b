// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A table with many rows, walked by GETBULK through snmpd.
//
//   large_table ROWS
//
// Each row has to be shown once, in the order of the index. Prints how long it
// takes and how much memory a row does.
#include <snmpsubagent.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Resources.h"
#include "testkit/Deadlines.h"
#include "testkit/MasterAgent.h"
#include "testkit/WaitFor.h"

namespace snmp = snmpsubagent;

namespace {

using Clock = std::chrono::steady_clock;

constexpr char kSubtree[] = "1.3.6.1.4.1.32473.9";
const std::string kColumn = "." + std::string(kSubtree) + ".5.1.2";

// Six values, as the benches have them.
struct Row {
  int number = 0;
  unsigned count = 0;
  int more[4] = {};
};

class LargeTable {
 public:
  // snmpd grants managers 100 varbinds of a GETBULK by itself.
  explicit LargeTable(unsigned rows)
      : rows_(rows), master_("maxGetbulkResponses 1000\n") {
    const Resources before = Resources::Now();
    for (unsigned row = 0; row < rows; ++row) table_.Insert(row, {0, row, {}});
    const Resources after = Resources::Now();
    std::printf("%u rows, %zu bytes each\n", rows,
                (after.heap - before.heap) / rows);
    table_.Column(2, &Row::count);
    agent_.Start();
    if (!testkit::WaitFor([&] { return module_.IsRegistered(); },
                          testkit::Deadlines::Session())) {
      throw std::runtime_error("the module is not registered");
    }
  }

  void Walk() const {
    std::string from = kColumn;
    unsigned row = 0;
    while (row < rows_) {
      const auto result = master_.Manager().Run(
          "snmpbulkget", {"-Cn0", "-Cr1000", "-Oq", from});
      for (const std::string& line : result.Lines()) {
        if (row == rows_) return;
        from = kColumn + "." + std::to_string(row);
        if (line != from + " " + std::to_string(row)) {
          throw std::runtime_error(line + " instead of " + from);
        }
        ++row;
      }
      if (!result.Succeeded()) throw std::runtime_error(result.error);
    }
  }

 private:
  const unsigned rows_;
  testkit::MasterAgent master_;
  snmp::Agent agent_{"endurance",
                     {"tcp:127.0.0.1:" + std::to_string(master_.AgentXPort())}};
  snmp::Module module_{agent_, kSubtree};
  snmp::Table<unsigned, Row> table_{module_, "5"};
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::cerr << "usage: large_table ROWS\n";
    return 2;
  }
  CountMemoryExactly(words);
  try {
    const LargeTable table(
        static_cast<unsigned>(std::strtoul(words[1], nullptr, 10)));
    const Resources before = Resources::Now();
    const auto start = Clock::now();
    table.Walk();
    const std::chrono::duration<double> time = Clock::now() - start;
    const Resources after = Resources::Now();
    std::printf("walked complete and in order in %.1f s; %s before, %s after\n",
                time.count(), before.Text().c_str(), after.Text().c_str());
    before.RequireNoGrowth(after, 1U << 20);
    return 0;
  } catch (const std::exception& exception) {
    std::cerr << exception.what() << '\n';
    return 1;
  }
}
