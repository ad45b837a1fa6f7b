// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A subagent on the library.
//
//   bench_subagent KIND MASTER COUNT
//
// KIND is what it publishes: scalars, table or traps. Ends on SIGTERM.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "NetSNMPNode.h"
#include "SNMPSubAgent.h"
#include "objects/objects.h"
#include "subagent/Objects.h"

namespace {

class BenchSubAgent : public SNMPSubAgent {
 public:
  // The node classes connect over TCP only.
  explicit BenchSubAgent(const std::string& master)
      : SNMPSubAgent("bench", "127.0.0.1",
                     std::atoi(master.c_str() + master.rfind(':') + 1)) {}

  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

void BuildObjects(const bench_order& order) {
  const std::string kind = order.kind;
  if (kind == "scalars") {
    BuildScalars(order.count);
  } else if (kind == "table") {
    BuildTable(order.count);
  } else if (kind == "traps") {
    BuildTraps();
  } else {
    std::fprintf(stderr, "unknown kind of subagent: %s\n", order.kind);
    std::exit(2);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const bench_order order = bench_order_of(argc, argv);
  bench_expect_end();
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  BenchSubAgent subAgent(order.master);
  BuildObjects(order);
  subAgent.Start();
  bench_wait_for_end();
  // No orderly shutdown: the benchmark is over.
  std::_Exit(0);
}
